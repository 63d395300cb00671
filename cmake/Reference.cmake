# `cmake --build BUILD_DIR --target reference` makes pages of the public headers in BUILD_DIR/docs/html, and fails on
# whatever Doxygen warns of.
find_program(VXSWF_DOXYGEN doxygen)
if(VXSWF_DOXYGEN)
  add_custom_target(reference
    COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/docs
    COMMAND ${CMAKE_COMMAND} -E env VXSWF_VERSION=${PROJECT_VERSION} VXSWF_REFERENCE=${PROJECT_BINARY_DIR}/docs
      ${VXSWF_DOXYGEN} docs/Doxyfile
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    COMMENT "Reference pages in docs/html"
    VERBATIM)
endif()
