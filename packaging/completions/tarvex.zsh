#compdef tarvex-asm tarvex-catalog tarvex-disasm vorn
# Completions for zsh. Commands, options and their values come from what the programs say with --help, names from the
# file on the line.

# The lines of a help text below a heading, those that go on joined.
_tarvex_section() {  # HEADING HELP
  print -r -- $2 | sed -n "/^$1:\$/,/^\$/p" | sed -e ':a' -e '$!N' -e 's/\n \{8,\}/  /' -e 'ta' -e 'P' -e 'D' |
    grep '^  [a-z-]'
}

# All texts of a key in JSON, each once. Texts with escapes are left out.
_tarvex_texts() {  # KEY
  grep -o "\"$1\": *\"[^\"\\\\]*\"" | sed 's/^[^:]*: *"\(.*\)"$/\1/' | LC_ALL=C sort -u
}

# Blocks of a catalog; behind the point of one, its functions.
_tarvex_in_catalog() {  # PROGRAM FILE WORD
  [[ -f $2 ]] || return
  if [[ $3 == *.* ]]; then
    _call_program names ${(q)1} show --format json -- ${(q)2} ${(q)3%%.*} 2>/dev/null | _tarvex_texts function |
      sed "s/^/${3%%.*}./"
  else
    _call_program names ${(q)1} show --format json -- ${(q)2} 2>/dev/null | _tarvex_texts fblock
  fi
}

_tarvex() {
  local program=${(Q)words[1]} name word command option command_here option_here value help
  local -a commands options names positionals
  local -A values
  local -i index positionals_here
  program=${program/#\~\//$HOME/}

  _tarvex_read_help() {  # sets $help, $options and $values
    local line
    help="$($program $command --help 2>/dev/null </dev/null)"
    options=() values=()
    for line in ${(f)"$(_tarvex_section Options $help)"}; do
      for name in ${(s:,:)${${(z)line}[1]}}; do
        options+=("$name:${line##*  }")
        [[ $line == "  "[^\ ]##" "(TEXT|UINT|INT|FLOAT)* ]] && values[$name]=${${(z)line}[2]}
      done
    done
  }
  setopt local_options extended_glob
  _tarvex_read_help
  for word in ${(f)"$(_tarvex_section Subcommands $help)"}; do
    commands+=("${${(z)word}[1]}:${word##*  }")
  done

  # What stands on the line, behind the cursor too: a file may come last.
  for (( index = 2; index <= $#words; ++index )); do
    word=${(Q)words[index]}
    if (( index == CURRENT )); then
      command_here=$command option_here=$option positionals_here=$#positionals option=
    elif [[ -n $option ]]; then
      option=
    elif [[ $word == -[a-z-]## ]]; then
      [[ -n $values[$word] ]] && option=$word
    elif [[ $word != -* && -n $commands && -z $command ]]; then
      command=$word
      _tarvex_read_help
    elif [[ $word != -*=* ]]; then
      positionals+=($word)
    fi
  done
  if [[ $PREFIX == --[a-z-]##=* ]]; then
    option_here=${PREFIX%%=*}
    compset -P '*='
  fi

  local file=${positionals[1]} kind=${program:t}
  file=${file/#\~\//$HOME/}
  if [[ -n $option_here ]]; then
    case $kind.$option_here in
      (*.--settings|*.--baseline) _files; return ;;
      (vorn.--message|vorn.--match) names=(name) ;|
      (vorn.--fblock|vorn.--function|vorn.--optype|vorn.--node) names=(${option_here#--}) ;|
      (vorn.--(message|match|fblock|function|optype|node))
        [[ -f $file ]] &&
          names=(${(f)"$(_call_program names ${(q)program} list --format json -- ${(q)file} 2>/dev/null |
                         _tarvex_texts $names)"}) || names=() ;;
      (tarvex-disasm.--only)
        names=(FAULTY ${(f)"$(_tarvex_in_catalog ${program%$kind}tarvex-catalog $file ${(Q)PREFIX})"}) ;;
      (*)
        value=$values[$option_here]
        [[ $value == *\{*\}* ]] && names=(${(s:,:)${${value#*\{}%\}*}}) ;;
    esac
    compadd -a names
  elif [[ $PREFIX == -* ]]; then
    _describe -o option options
  elif [[ -n $commands && -z $command_here ]]; then
    _describe command commands
  elif [[ $kind.$command == tarvex-catalog.show && $positionals_here -gt 0 ]]; then
    names=(${(f)"$(_tarvex_in_catalog $program $file ${(Q)PREFIX})"})
    compadd -a names
  elif [[ $kind.$command != tarvex-catalog.explain ]]; then
    _files
  fi
}

_tarvex "$@"
