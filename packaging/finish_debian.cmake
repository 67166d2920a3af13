# Makes the packages what Debian wants them to be, before CPack closes them: with a changelog and a copyright, which the
# licence is a part of, man pages that are compressed, and completions where Debian's zsh looks for those of packages. CPack
# hands over its variables.

# The date of this version, as the list of changes has it.
file(STRINGS ${CPACK_TARVEX_SOURCE}/CHANGELOG.md heading REGEX "^## ${CPACK_PACKAGE_VERSION} " LIMIT_COUNT 1)
if(NOT heading MATCHES "\\(([0-9-]+)\\)$")
  message(FATAL_ERROR "CHANGELOG.md has no date for ${CPACK_PACKAGE_VERSION}.")
endif()
execute_process(COMMAND date --utc --rfc-email --date=${CMAKE_MATCH_1} OUTPUT_VARIABLE date
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

function(compress)
  execute_process(COMMAND gzip -9 --no-name ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# finish(COMPONENT PACKAGES...): the package of a component, whose programs or library have code of other packages in them.
function(finish component)
  string(TOUPPER ${component} name)
  set(package ${CPACK_DEBIAN_${name}_PACKAGE_NAME})
  set(share ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share)
  set(documents ${share}/doc/${package})

  file(WRITE ${documents}/changelog "tarvex (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n
  * Release ${CPACK_PACKAGE_VERSION}; CHANGELOG.md of the package tarvex has the changes.\n
 -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")
  compress(${documents}/changelog)

  file(READ ${CPACK_TARVEX_SOURCE}/LICENSE copyright)
  foreach(other ${ARGN})
    file(READ /usr/share/doc/${other}/copyright text)
    string(APPEND copyright "\n\nThe files have code of ${other} in them, whose package says:\n\n${text}")
  endforeach()
  file(WRITE ${documents}/copyright "${copyright}")
  file(REMOVE ${documents}/LICENSE)

  file(GLOB_RECURSE pages ${share}/man/*)
  if(pages)
    compress(${pages})
  endif()
  if(EXISTS ${share}/zsh/site-functions)
    file(RENAME ${share}/zsh/site-functions ${share}/zsh/vendor-completions)
  endif()
endfunction()

if(CPACK_TARVEX_STATIC_XERCES)
  set(parser libxerces-c-dev)
endif()
finish(tools ${parser} nlohmann-json3-dev libcli11-dev)
finish(development nlohmann-json3-dev)
