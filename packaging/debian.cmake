# Debian packages, one for the programs and one for the library: cpack, or ./package.sh.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarvex)
set(CPACK_PACKAGE_VENDOR "The TARVEX developers")
set(CPACK_PACKAGE_CONTACT "The TARVEX developers <tarvex@lists.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_COMPONENTS_ALL tools development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME tarvex)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
# What the documents use beside the programs.
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS "bash-completion, jq, libkestrel-dev, man-db, python3, sqlite3")
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "converter of MOST function catalogs into bus databases
TARVEX checks function catalogs of MOST networks, which are XML files, and
converts them into bus databases: Vorn, SQLite, KCD and tables. vorn shows,
compares and joins databases, tarvex-catalog tells what is wrong with
catalogs and what is in them, tarvex-disasm tells what captured messages
say, and tarvex-asm makes messages of names and values.")

# The library is static, so its users link what it uses.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkestrel-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libxml2-dev, libsqlite3-dev, libsodium-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS tarvex)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "library that writes and reads bus databases
kestrel keeps databases of bus messages: nodes, messages, signals and
attributes. It writes them as Vorn, SQLite, KCD and tables, and reads Vorn
and SQLite. The package has the static library, its headers, and the files
that CMake and pkg-config find it by.")

set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/finish_debian.cmake)
set(CPACK_TARVEX_SOURCE ${PROJECT_SOURCE_DIR})
set(CPACK_TARVEX_STATIC_XERCES ${TARVEX_STATIC_XERCES})
include(CPack)
