# `cmake --install` for C++ hosts: the core, the simulated device, their headers and a CMake package.

include(CMakePackageConfigHelpers)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/QuorvantisPush")
set(header_folder "${CMAKE_INSTALL_INCLUDEDIR}/QuorvantisPush")
set(installed_targets quorvantis_push quorvantis_simulated quorvantis_device quorvantis_json quorvantis_jose quorvantis_base quorvantis_server)

foreach(target IN LISTS installed_targets)
  target_compile_features(${target} PUBLIC cxx_std_20)
endforeach()
foreach(part simulated device json jose base server)
  set_target_properties(quorvantis_${part} PROPERTIES EXPORT_NAME ${part})
endforeach()

install(TARGETS ${installed_targets}
  EXPORT QuorvantisPush
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
  INCLUDES DESTINATION "${header_folder}")
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
if(QUORVANTIS_TOOL)
  set_target_properties(quorvantis_push_tool PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  if(NOT BUILD_SHARED_LIBS)
    # Otherwise the build tree's program keeps room for it in empty entries, which mean the current folder.
    set_target_properties(quorvantis_push_tool PROPERTIES BUILD_WITH_INSTALL_RPATH ON)
  endif()
  install(TARGETS quorvantis_push_tool RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
endif()

# Headers include each other by their path in the source tree.
foreach(folder IN LISTS QUORVANTIS_CORE_FOLDERS ITEMS platform platform/simulated device json server)
  file(GLOB headers CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/${folder}/*.h")
  list(FILTER headers EXCLUDE REGEX "/shared_slot\\.h$")  # for the simulated device's relaunch alone
  install(FILES ${headers} DESTINATION "${header_folder}/${folder}")
endforeach()

install(EXPORT QuorvantisPush
  FILE QuorvantisPushTargets.cmake
  NAMESPACE QuorvantisPush::
  DESTINATION "${package_folder}")
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/Config.cmake.in"
  "${PROJECT_BINARY_DIR}/QuorvantisPushConfig.cmake"
  INSTALL_DESTINATION "${package_folder}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/QuorvantisPushConfigVersion.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/QuorvantisPushConfig.cmake"
  "${PROJECT_BINARY_DIR}/QuorvantisPushConfigVersion.cmake"
  DESTINATION "${package_folder}")
