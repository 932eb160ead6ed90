# quorvantis_public_headers(TARGET HEADER...): what the current folder installs for hosts. Headers include each other by
# their path in the source tree, and each compiles alone.
function(quorvantis_public_headers target)
  set(headers ${ARGN})
  list(TRANSFORM headers PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${headers})
endfunction()
