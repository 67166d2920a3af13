# Puts the files of the page into a source file:
# cmake -DSOURCE=... -DSTYLES=a.css,b.css -DSCRIPTS=a.js,b.js -DOUTPUT=... -P embed.cmake
# The scripts are modules that import each other, for tools and tests. In the page they become one script: what they
# import and export goes, their names have to be different.

function(quoted variable text)
  if(text MATCHES [[\)page"]])
    message(FATAL_ERROR "the end of a quotation is in a file of the page")
  endif()
  set(${variable} "R\"page(${text})page\"" PARENT_SCOPE)
endfunction()

file(READ "${SOURCE}/page.html" html)
quoted(html "${html}")
string(REPLACE "," ";" names "${STYLES}")
set(style "")
foreach(name IN LISTS names)
  file(READ "${SOURCE}/${name}" file)
  string(APPEND style "${file}")
endforeach()
quoted(style "${style}")
string(REPLACE "," ";" names "${SCRIPTS}")
set(scripts "")
foreach(name IN LISTS names)
  file(READ "${SOURCE}/${name}" script)
  if(script MATCHES "</|<!--")
    message(FATAL_ERROR "${name} has what would end a script, or make a comment of it, inside a page")
  endif()
  while(script MATCHES "(^|\n)import [^;]*;\n")
    string(REGEX REPLACE "(^|\n)import [^;]*;\n" "\\1" script "${script}")
  endwhile()
  string(REGEX REPLACE "(^|\n)export (default )?" "\\1" script "${script}")
  if(script MATCHES "(^|\n)(import|export) ")
    message(FATAL_ERROR "${name}: something is imported or exported that the page would not have")
  endif()
  quoted(script "${script}")
  string(APPEND scripts "    ${script},\n")
endforeach()

file(WRITE "${OUTPUT}.new" "#include \"page/skeleton.h\"

namespace tarvex::page {
namespace {

constexpr std::string_view kScripts[] = {
${scripts}};

}  // namespace

const std::string_view kPageHtml = ${html};
const std::string_view kPageStyle = ${style};
const std::span<const std::string_view> kPageScripts = kScripts;

}  // namespace tarvex::page
")
file(COPY_FILE "${OUTPUT}.new" "${OUTPUT}" ONLY_IF_DIFFERENT)
file(REMOVE "${OUTPUT}.new")
