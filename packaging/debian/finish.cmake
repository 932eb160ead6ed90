# What Debian's policy asks of a package beyond what is installed. CPack runs it when the files of all packages are
# in place, before it packs them.

if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  message(FATAL_ERROR "SOURCE_DATE_EPOCH is not set: scripts/package sets it")
endif()

set(permissions OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(sources "${CPACK_QUORVANTIS_SOURCES}/packaging/debian")
set(ENV{LC_ALL} C)
string(TIMESTAMP day "%a, %d %b %Y %H:%M:%S +0000" UTC)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER "${component}" upper)
  set(package "${CPACK_DEBIAN_${upper}_PACKAGE_NAME}")
  set(version "${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
  set(share "${CPACK_TEMPORARY_DIRECTORY}/${component}/usr/share")
  set(documents "${share}/doc/${package}")
  file(COPY "${sources}/copyright" DESTINATION "${documents}" FILE_PERMISSIONS ${permissions})
  configure_file("${sources}/overrides.in" "${share}/lintian/overrides/${package}" @ONLY FILE_PERMISSIONS ${permissions})
  set(changelog "${documents}/changelog.Debian")
  configure_file("${sources}/changelog.in" "${changelog}" @ONLY FILE_PERMISSIONS ${permissions})
  run(gzip -9n "${changelog}")
endforeach()

run(gzip -9n "${CPACK_TEMPORARY_DIRECTORY}/tool/usr/share/man/man1/quorvantis-push.1")
# CPack strips programs and leaves the static libraries alone.
file(GLOB_RECURSE archives "${CPACK_TEMPORARY_DIRECTORY}/development/usr/lib/*.a")
run("${CPACK_QUORVANTIS_STRIP}" --strip-debug --remove-section=.comment --enable-deterministic-archives ${archives})
