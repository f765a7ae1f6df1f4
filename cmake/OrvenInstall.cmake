# What `cmake --install` lays down: the library with what builds against it, the tools, the documents.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# Each has its man page in docs/man.
set(ORVEN_TOOLS orvensql orvencopy orvenregister)

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/Orvenmod)
install(TARGETS orvenmod EXPORT OrvenmodTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/orvenmod DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT OrvenmodTargets NAMESPACE Orvenmod:: DESTINATION ${package})
configure_package_config_file(cmake/OrvenmodConfig.cmake.in OrvenmodConfig.cmake INSTALL_DESTINATION ${package})
# Before 1.0 a second number is another interface.
write_basic_package_version_file(OrvenmodConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OrvenmodConfig.cmake ${PROJECT_BINARY_DIR}/OrvenmodConfigVersion.cmake DESTINATION ${package})

# An archive's user links what the archive takes from elsewhere; a shared library brings it along.
if(BUILD_SHARED_LIBS)
  set(ORVEN_PC_REQUIRES "")
  set(ORVEN_PC_LIBS "")
else()
  set(ORVEN_PC_REQUIRES "Qt6Widgets Qt6PrintSupport Qt6Svg xcb sqlite3 odbc libpq icu-i18n libgsf-1 libxml-2.0 freexl xlsxwriter")
  set(ORVEN_PC_LIBS " -lsimpleini -lodbcinst -lstdc++ -ldl -lpthread")
endif()
# Found from where the file lies, so that an unpacked folder will do.
file(RELATIVE_PATH ORVEN_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" ORVEN_PC_PREFIX "${ORVEN_PC_PREFIX}")
configure_file(cmake/orvenmod.pc.in orvenmod.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orvenmod.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

foreach(tool ${ORVEN_TOOLS})
  install(TARGETS ${tool} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES docs/man/${tool}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()

install(FILES README.md README.zh.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} PATTERN man EXCLUDE)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} PATTERN __pycache__ EXCLUDE)
install(FILES examples/host/Report3.grf DESTINATION ${CMAKE_INSTALL_DATADIR}/orvenmod)
install(DIRECTORY bindings/python/orvenmod DESTINATION lib/python3/dist-packages PATTERN __pycache__ EXCLUDE)
