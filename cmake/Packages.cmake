# The Debian packages quorvantis-push and libquorvantispush-dev, which scripts/package builds with CPack.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quorvantis-push)
set(CPACK_PACKAGE_VENDOR Quorvantis)
# To be replaced by the packages' maintainers.
set(CPACK_PACKAGE_CONTACT "QuorvantisPush maintainers <push@quorvantis.com>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_COMPONENTS_ALL tool development)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
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
  "libsqlite3-dev, libssl-dev, pkg-config, zlib1g-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "push notifications on a simulated phone, for C++ hosts
The QuorvantisPush library, which iOS applications link to receive push
notifications, on a simulated phone: the headers and static libraries with
which a C++20 host is built and tested, a CMake package and a pkg-config
file.")

set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/packaging/debian/finish.cmake")
set(CPACK_QUORVANTIS_SOURCES "${PROJECT_SOURCE_DIR}")
set(CPACK_QUORVANTIS_STRIP "${CMAKE_STRIP}")
include(CPack)
