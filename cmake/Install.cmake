# What `cmake --install` puts in place: the libraries with their headers, and the two ways for a host to find them. The
# components are those that become packages: `runtime` and `dev`. The command brings its own.
include(CMakePackageConfigHelpers)

# The movie library finds the platform library beside itself, wherever the two are put.
set_target_properties(vxswf PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS vxplatform vxswf EXPORT vxswfTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
install(DIRECTORY src/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vxswf COMPONENT dev
  FILES_MATCHING PATTERN "*.h" PATTERN "*_p.h" EXCLUDE)

# find_package(vxswf)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vxswf)
install(EXPORT vxswfTargets NAMESPACE vxswf:: DESTINATION ${package_dir} COMPONENT dev)
configure_package_config_file(cmake/vxswfConfig.cmake.in ${PROJECT_BINARY_DIR}/cmake/vxswfConfig.cmake
  INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/cmake/vxswfConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/cmake/vxswfConfig.cmake
  ${PROJECT_BINARY_DIR}/cmake/vxswfConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT dev)

# pkg-config. Paths count from the file itself, so that `cmake --install --prefix` may put the package anywhere. What a
# shared library needs it names itself; a static one leaves that to `pkg-config --static`.
if(NOT BUILD_SHARED_LIBS)
  set(vxswf_pc_private zlib)
  if(VXSWF_LZMA)
    string(APPEND vxswf_pc_private " liblzma")
  endif()
  if(VXSWF_TYPE_ENGINE)
    set(vxplatform_pc_private "freetype2 fontconfig")
  endif()
endif()
file(RELATIVE_PATH vxswf_pc_includedir
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_FULL_INCLUDEDIR}/vxswf)
foreach(library vxplatform vxswf)
  configure_file(cmake/${library}.pc.in ${PROJECT_BINARY_DIR}/cmake/${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/cmake/${library}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
endforeach()
