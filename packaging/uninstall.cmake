# Removes what was installed from the build directory BUILD, and the directories that nobody else puts anything into.
set(manifest ${BUILD}/install_manifest.txt)
if(NOT EXISTS ${manifest})
  message(FATAL_ERROR "Nothing was installed from ${BUILD}.")
endif()

# Removes a directory and those above it, as long as they are ours and have nothing in them.
function(remove_empty folder)
  while(folder MATCHES "/(tarvex|kestrel)(/|$)" AND IS_DIRECTORY $ENV{DESTDIR}${folder})
    execute_process(COMMAND rmdir $ENV{DESTDIR}${folder} RESULT_VARIABLE result ERROR_QUIET)
    if(result)
      return()
    endif()
    cmake_path(GET folder PARENT_PATH folder)
  endwhile()
endfunction()

file(STRINGS ${manifest} files ENCODING UTF-8)
foreach(file IN LISTS files)
  file(REMOVE $ENV{DESTDIR}${file})
  cmake_path(GET file PARENT_PATH folder)
  remove_empty("${folder}")
endforeach()
