# The library is static, so its users link what it uses.
include(CMakeFindDependencyMacro)
find_dependency(LibXml2)
find_dependency(SQLite3)
list(APPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR})
find_dependency(sodium)
include(${CMAKE_CURRENT_LIST_DIR}/kestrel-targets.cmake)
