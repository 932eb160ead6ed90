# The core: all of the library's behaviour, over the seam that platform/ declares. It does not define the seam.

file(STRINGS "${CMAKE_CURRENT_LIST_DIR}/core-folders" QUORVANTIS_CORE_FOLDERS)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${CMAKE_CURRENT_LIST_DIR}/core-folders")

add_library(quorvantis_push)
add_subdirectory(platform)
foreach(folder IN LISTS QUORVANTIS_CORE_FOLDERS)
  add_subdirectory("${folder}")
endforeach()
quorvantis_target(quorvantis_push)
set_target_properties(quorvantis_push PROPERTIES
  OUTPUT_NAME QuorvantisPush
  EXPORT_NAME core
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR})
add_library(QuorvantisPush::core ALIAS quorvantis_push)
