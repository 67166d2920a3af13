# Completions for bash. Commands, options and their values come from what the programs say with --help, names from the
# file on the line. Nothing here depends on the package bash-completion: to use it without, read this file with `.`.

# The help of a program, or of its command, each asked for once in a shell.
declare -gA _tarvex_helps=()

_tarvex_help() {  # PROGRAM [COMMAND]; sets $help
    local key="$1 $2"
    if [[ -z ${_tarvex_helps[$key]-} ]]; then
        _tarvex_helps[$key]=$("$1" ${2:+"$2"} --help 2>/dev/null </dev/null)
    fi
    help=${_tarvex_helps[$key]}
}

# The lines of a help text below a heading.
_tarvex_section() {  # HEADING
    sed -n "/^$1:\$/,/^\$/p" <<<"$help"
}

_tarvex_commands() {
    _tarvex_section Subcommands | sed -n 's/^  \([a-z][a-z-]*\).*/\1/p'
}

_tarvex_options() {
    _tarvex_section Options | sed -n 's/^  \(-[^ ]*\).*/\1/p' | tr ',' '\n'
}

# Prints what an option takes, as in TEXT or TEXT:{text,json}; nothing for one without a value.
_tarvex_value() {  # OPTION
    _tarvex_section Options | sed -n 's/^  \(-[^ ]*\) \(\(TEXT\|UINT\|INT\|FLOAT\)[^ ]*\).*/,\1, \2/p' |
        sed -n "s/^.*,$1,[^ ]* \(.*\)/\1/p"
}

# The words of the line, and which of them is the current one. COMP_WORDS are pieces of them: `:`, `=` and others stand alone
# there, which names of files have, too. What no blank parts belongs together.
_tarvex_words() {  # sets $words, $current_at, and $piece: what is replaced of the current word
    local rest=$COMP_LINE index part blanks last=''
    words=()
    for ((index = 0; index < ${#COMP_WORDS[@]}; ++index)); do
        part=${COMP_WORDS[index]}
        blanks=${rest%%[![:blank:]]*}
        rest=${rest#"$blanks"}
        rest=${rest#"$part"}
        if [[ -n $blanks || -z $part || -z $last ]]; then
            words+=("$part")
        else
            words[-1]+=$part
        fi
        last=$part
        if ((index == COMP_CWORD)); then
            current_at=$((${#words[@]} - 1)) piece=$part
        fi
    done
    if [[ $piece == [=:@]* ]]; then
        piece=
    fi
}

# The word as the shell would hand it to a program, as far as nothing has to be run for that.
_tarvex_plain() {  # WORD; sets $plain
    local rest=${1/#\~\//$HOME/} part
    plain=
    while [[ -n $rest ]]; do
        case $rest in
            \'*)
                rest=${rest:1} part=${rest%%\'*}
                plain+=$part rest=${rest:${#part}+1} ;;
            \"*)
                rest=${rest:1}
                while [[ -n $rest && $rest != \"* ]]; do
                    [[ $rest == \\[\"\\\$\`]* ]] && rest=${rest:1}
                    plain+=${rest:0:1} rest=${rest:1}
                done
                rest=${rest:1} ;;
            \\*) plain+=${rest:1:1} rest=${rest:2} ;;
            *)
                part=${rest%%[\'\"\\]*}
                plain+=$part rest=${rest:${#part}} ;;
        esac
    done
}

# All texts of a key in JSON, each once. Texts with escapes are left out.
_tarvex_texts() {  # KEY
    grep -o "\"$1\": *\"[^\"\\\\]*\"" | sed 's/^[^:]*: *"\(.*\)"$/\1/' | LC_ALL=C sort -u
}

# Names of messages, blocks and so on in the database on the line.
_tarvex_in_database() {  # PROGRAM FILE KEY
    [[ -f $2 ]] && "$1" list --format json -- "$2" 2>/dev/null | _tarvex_texts "$3"
}

# Blocks of the catalog on the line; behind the point of one, its functions.
_tarvex_in_catalog() {  # PROGRAM FILE WORD
    [[ -f $2 ]] || return
    local block=${3%%.*}
    if [[ $3 == *.* ]]; then
        "$1" show --format json -- "$2" "$block" 2>/dev/null | _tarvex_texts function | sed "s/^/$block./"
    else
        "$1" show --format json -- "$2" 2>/dev/null | _tarvex_texts fblock
    fi
}

# Offers the lines of the standard input that begin with the current word, and no files in their place.
_tarvex_offer() {
    local line quoted
    compopt +o default 2>/dev/null
    while IFS= read -r line; do
        if [[ $line == "$plain"* ]]; then
            case $current in
                [\"\']*) quoted=$line ;;
                *) printf -v quoted %q "$line" ;;
            esac
            COMPREPLY+=("${quoted#"${current%"$piece"}"}")
        fi
    done
}

_tarvex() {
    local program=${COMP_WORDS[0]/#\~\//$HOME/} name=${1##*/} words=() current_at=0 piece='' current
    local help plain index word commands command='' option='' positionals=() options_end=''
    local command_here option_here positionals_here options_end_here
    COMPREPLY=()
    _tarvex_words
    current=${words[current_at]}
    _tarvex_help "$program" ''
    commands=$(_tarvex_commands)
    # What stands on the line, behind the cursor too: a file may come last.
    for ((index = 1; index < ${#words[@]}; ++index)); do
        word=${words[index]}
        if ((index == current_at)); then
            command_here=$command option_here=$option positionals_here=${#positionals[@]} options_end_here=$options_end option=
        elif [[ -n $option ]]; then
            option=
        elif [[ -z $options_end && $word == -- ]]; then
            options_end=1
        elif [[ -z $options_end && $word =~ ^--?[a-z][-a-z]*(=|$) ]]; then
            [[ $word != *=* && -n $(_tarvex_value "$word") ]] && option=$word
        elif [[ -n $commands && -z $command ]]; then
            command=$word
            _tarvex_help "$program" "$command"
        else
            _tarvex_plain "$word"
            positionals+=("$plain")
        fi
    done
    if [[ -z $option_here && -z $options_end_here && $current =~ ^--[a-z][-a-z]*= ]]; then
        option_here=${current%%=*} current=${current#*=}
    fi
    _tarvex_plain "$current"
    local file=${positionals[0]-} catalog=${program%"$name"}tarvex-catalog
    if [[ -n $option_here ]]; then
        case $name.$option_here in
            *.--settings | *.--baseline) ;;  # files
            vorn.--message | vorn.--match) _tarvex_offer < <(_tarvex_in_database "$program" "$file" name) ;;
            vorn.--fblock | vorn.--function | vorn.--optype | vorn.--node)
                _tarvex_offer < <(_tarvex_in_database "$program" "$file" "${option_here#--}") ;;
            tarvex-disasm.--only)
                _tarvex_offer < <(echo FAULTY; _tarvex_in_catalog "$catalog" "$file" "$plain") ;;
            *) _tarvex_offer < <(_tarvex_value "$option_here" | sed -n 's/^[^{]*{\(.*\)}.*/\1/p' | tr ',' '\n') ;;
        esac
    elif [[ -z $options_end_here && $current == -* ]]; then
        _tarvex_offer < <(_tarvex_options)
    elif [[ -n $commands && -z $command_here ]]; then
        _tarvex_offer <<<"$commands"
    elif [[ $name.$command == tarvex-catalog.show && $positionals_here -gt 0 ]]; then
        _tarvex_offer < <(_tarvex_in_catalog "$program" "$file" "$plain")
    elif [[ $name.$command == tarvex-catalog.explain ]]; then
        _tarvex_offer </dev/null
    fi
}

complete -o default -F _tarvex tarvex-asm tarvex-catalog tarvex-disasm vorn
