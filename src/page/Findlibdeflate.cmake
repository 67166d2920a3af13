# libdeflate, which has no CMake package before version 1.15: the target libdeflate::libdeflate.
find_path(libdeflate_INCLUDE_DIR libdeflate.h)
find_library(libdeflate_LIBRARY deflate)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(libdeflate REQUIRED_VARS libdeflate_LIBRARY libdeflate_INCLUDE_DIR)
mark_as_advanced(libdeflate_INCLUDE_DIR libdeflate_LIBRARY)
if(libdeflate_FOUND AND NOT TARGET libdeflate::libdeflate)
  add_library(libdeflate::libdeflate UNKNOWN IMPORTED)
  set_target_properties(libdeflate::libdeflate PROPERTIES
    IMPORTED_LOCATION ${libdeflate_LIBRARY} INTERFACE_INCLUDE_DIRECTORIES ${libdeflate_INCLUDE_DIR})
endif()
