# The Debian packages of the tool, for C++ hosts, and for tests in Python and for Node, which scripts/package builds with CPack.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quorvantis-push)
set(CPACK_PACKAGE_VENDOR Quorvantis)
# To be replaced by the packages' maintainers.
set(CPACK_PACKAGE_CONTACT "QuorvantisPush maintainers <push@quorvantis.com>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL tool development python node)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# Each release of Debian has libraries of its own, and the package of a newer one replaces that of an older one.
cmake_host_system_information(RESULT release QUERY DISTRIB_VERSION_ID)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
if(release)
  string(APPEND CPACK_DEBIAN_PACKAGE_RELEASE "~deb${release}u1")
endif()
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://www.quorvantis.com)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME quorvantis-push)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_TOOL_DESCRIPTION "simulated phone to test push notifications on
The QuorvantisPush library, which iOS applications link to receive push
notifications, on a simulated phone. The tool says what a notification
does and what is wrong with its payload, plays scenarios that give the same
output every time, holds a phone that a browser, a test or a backend can
use, and runs a push server for development.")

# Required by the CMake package and the pkg-config file.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libquorvantispush-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
string(CONCAT CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "libcjose-dev, libcurl4-openssl-dev | libcurl-dev, libjansson-dev, libsimdjson-dev, "
  "libsqlite3-dev, libssl-dev, pkgconf, zlib1g-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "push notifications on a simulated phone, for C++ hosts
The QuorvantisPush library, which iOS applications link to receive push
notifications, on a simulated phone: the headers and static libraries with
which a C++20 host is built and tested, a CMake package and a pkg-config
file.")

foreach(module IN ITEMS PYTHON NODE)
  set(CPACK_DEBIAN_${module}_PACKAGE_ARCHITECTURE all)
  set(in_words "Python")
  if(module STREQUAL NODE)
    set(in_words "Node")
  endif()
  set(CPACK_COMPONENT_${module}_DESCRIPTION "simulated phones in a backend's tests, for ${in_words}
Starts the simulated phone of quorvantis-push, with a stand-in for Apple's
push service in front of it, and ends it with the tests: a backend's own
client sends to it, and the test sees what a customer would see.")
endforeach()
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-quorvantis-push)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3:any (>= 3.11), quorvantis-push")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS python3-pytest)
set(maintainer_scripts "${PROJECT_SOURCE_DIR}/packaging/debian/python")
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA "${maintainer_scripts}/postinst;${maintainer_scripts}/prerm")
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_NODE_PACKAGE_NAME node-quorvantis-push)
set(CPACK_DEBIAN_NODE_PACKAGE_SECTION javascript)
set(CPACK_DEBIAN_NODE_PACKAGE_DEPENDS "nodejs (>= 18), quorvantis-push")

set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/debian/finish.cmake")
set(CPACK_QUORVANTIS_SOURCES "${PROJECT_SOURCE_DIR}")
set(CPACK_QUORVANTIS_STRIP "${CMAKE_STRIP}")
include(CPack)
