# `cmake --install`: for C++ hosts the core, the simulated device, their headers, a CMake package and a pkg-config
# file (component "development"); the tool, its manual page and its completions (component "tool").

include(CMakePackageConfigHelpers)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/QuorvantisPush")
set(installed_targets quorvantis_push quorvantis_simulated quorvantis_device quorvantis_json quorvantis_jose quorvantis_base quorvantis_server)

foreach(target IN LISTS installed_targets)
  target_compile_features(${target} PUBLIC cxx_std_20)
endforeach()
foreach(part simulated device json jose base server)
  set_target_properties(quorvantis_${part} PROPERTIES EXPORT_NAME ${part})
endforeach()

install(TARGETS ${installed_targets}
  EXPORT QuorvantisPush
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT development
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/QuorvantisPush" COMPONENT development)
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
if(QUORVANTIS_TOOL)
  if(BUILD_SHARED_LIBS)
    set_target_properties(quorvantis_push_tool PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  else()
    # Otherwise the build tree's program has empty entries in its run path, which mean the current folder.
    set_target_properties(quorvantis_push_tool PROPERTIES BUILD_WITH_INSTALL_RPATH ON)
  endif()
  install(TARGETS quorvantis_push_tool RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT tool)

  configure_file("${PROJECT_SOURCE_DIR}/packaging/man/quorvantis-push.1.in" "${PROJECT_BINARY_DIR}/quorvantis-push.1" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/quorvantis-push.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tool)
  set(completions "${PROJECT_SOURCE_DIR}/packaging/completions")
  set(zsh_folder site-functions)
  if(QUORVANTIS_PACKAGES)
    set(zsh_folder vendor-completions)  # Debian keeps the other for /usr/local
  endif()
  install(FILES "${completions}/quorvantis-push.bash"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME quorvantis-push COMPONENT tool)
  install(FILES "${completions}/_quorvantis-push"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/${zsh_folder}" COMPONENT tool)
  install(FILES "${completions}/quorvantis-push.fish"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d" COMPONENT tool)
endif()

install(EXPORT QuorvantisPush
  FILE QuorvantisPushTargets.cmake
  NAMESPACE QuorvantisPush::
  DESTINATION "${package_folder}"
  COMPONENT development)
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/Config.cmake.in"
  "${PROJECT_BINARY_DIR}/QuorvantisPushConfig.cmake"
  INSTALL_DESTINATION "${package_folder}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/QuorvantisPushConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/QuorvantisPushConfig.cmake"
  "${PROJECT_BINARY_DIR}/QuorvantisPushConfigVersion.cmake"
  DESTINATION "${package_folder}"
  COMPONENT development)

# The same for builds without CMake; its folders are relative to the file.
file(RELATIVE_PATH prefix_from_pkgconfig "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file("${PROJECT_SOURCE_DIR}/cmake/quorvantispush.pc.in" "${PROJECT_BINARY_DIR}/quorvantispush.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/quorvantispush.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
  COMPONENT development)

if(QUORVANTIS_PACKAGES)
  add_subdirectory(clients)
  include(Packages)
endif()
