# What `cmake --install` puts in place: the libraries with their headers, and the two ways for a host to find them.
include(CMakePackageConfigHelpers)

# The movie library finds the platform library beside itself, wherever the two are put.
set_target_properties(vxswf PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS vxplatform vxswf EXPORT vxswfTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vxswf
  FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE)

# find_package(vxswf)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vxswf)
install(EXPORT vxswfTargets NAMESPACE vxswf:: DESTINATION ${package_dir})
configure_package_config_file(cmake/vxswfConfig.cmake.in ${PROJECT_BINARY_DIR}/cmake/vxswfConfig.cmake
  INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/cmake/vxswfConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/cmake/vxswfConfig.cmake
  ${PROJECT_BINARY_DIR}/cmake/vxswfConfigVersion.cmake
  DESTINATION ${package_dir})

# pkg-config. Paths count from the file itself, so that `cmake --install --prefix` may put the package anywhere.
file(RELATIVE_PATH vxswf_pc_includedir
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_FULL_INCLUDEDIR}/vxswf)
foreach(library vxplatform vxswf)
  configure_file(cmake/${library}.pc.in ${PROJECT_BINARY_DIR}/cmake/${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/cmake/${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
