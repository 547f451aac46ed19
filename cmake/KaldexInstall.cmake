# What "cmake --install" puts where: the command with man page and completion, the shared libraries, and for programs
# that use them the exported headers, a CMake package and a pkg-config file. The tree may be moved as a whole.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Kaldex)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# Libraries. They find one another beside themselves, wherever the tree stands.
set_target_properties(kaldex_base PROPERTIES EXPORT_NAME base INSTALL_RPATH "$ORIGIN")
set_target_properties(kaldex_model PROPERTIES EXPORT_NAME model INSTALL_RPATH "$ORIGIN")
set_target_properties(kaldex_interchange PROPERTIES EXPORT_NAME interchange INSTALL_RPATH "$ORIGIN")
install(TARGETS kaldex_base kaldex_model kaldex_interchange EXPORT KaldexTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/kaldex DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h")

# find_package(Kaldex): Kaldex::model and Kaldex::interchange. Kaldex::base comes along because the two are linked
# with it; it has no exported headers.
install(EXPORT KaldexTargets NAMESPACE Kaldex:: DESTINATION ${package_dir})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/KaldexConfig.cmake.in
  ${PROJECT_BINARY_DIR}/KaldexConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/KaldexConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/KaldexConfig.cmake ${PROJECT_BINARY_DIR}/KaldexConfigVersion.cmake
  DESTINATION ${package_dir})

# pkg-config, with paths from where the file stands.
file(RELATIVE_PATH KALDEX_PC_PREFIX /prefix/${pkgconfig_dir} /prefix)
configure_file(${PROJECT_SOURCE_DIR}/cmake/kaldex.pc.in ${PROJECT_BINARY_DIR}/kaldex.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kaldex.pc DESTINATION ${pkgconfig_dir})

# The command and what belongs to it.
install(TARGETS kaldex RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${PROJECT_SOURCE_DIR}/docs/man/kaldex.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${PROJECT_SOURCE_DIR}/apps/cli/kaldex.bash-completion
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME kaldex)
install(DIRECTORY ${PROJECT_BINARY_DIR}/i18n/ DESTINATION ${CMAKE_INSTALL_DATADIR}/kaldex/translations
  FILES_MATCHING PATTERN "*.qm")
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR})
