# What `cmake --install` puts under the prefix, in two components: Runtime (the versioned shared
# libraries and their soname links) and Development (the public headers under include/QzGui/,
# the unversioned links, the CMake package QzGui and the pkg-config files).
include(CMakePackageConfigHelpers)

set(QZGUI_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/QzGui)
set(QZGUI_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(QZGUI_INCLUDE_DIR ${CMAKE_INSTALL_INCLUDEDIR}/QzGui)

install(TARGETS ${QZGUI_LIBRARIES} EXPORT QzGuiTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
  INCLUDES DESTINATION ${QZGUI_INCLUDE_DIR})

foreach(target ${QZGUI_LIBRARIES})
  get_target_property(base ${target} QZGUI_HEADER_BASE)
  get_target_property(headers ${target} QZGUI_PUBLIC_HEADERS)
  foreach(header ${headers})
    get_filename_component(subdir ${header} DIRECTORY)
    install(FILES ${base}/${header} DESTINATION ${QZGUI_INCLUDE_DIR}/${subdir}
            COMPONENT Development)
  endforeach()
endforeach()

install(EXPORT QzGuiTargets NAMESPACE QzGui:: DESTINATION ${QZGUI_CMAKE_DIR}
        COMPONENT Development)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/QzGuiConfig.cmake.in
  ${PROJECT_BINARY_DIR}/QzGuiConfig.cmake INSTALL_DESTINATION ${QZGUI_CMAKE_DIR})
# Before 1.0 a minor version may change the interface: only the same major.minor matches.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QzGuiConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QzGuiConfig.cmake ${PROJECT_BINARY_DIR}/QzGuiConfigVersion.cmake
        DESTINATION ${QZGUI_CMAKE_DIR} COMPONENT Development)

# pkg-config files that find the prefix from where they lie, so that the same files serve a
# prefix given at install time and the Debian package's /usr.
file(RELATIVE_PATH QZGUI_PC_TO_PREFIX /prefix/${QZGUI_PKGCONFIG_DIR} /prefix)
string(REGEX REPLACE "/$" "" QZGUI_PC_TO_PREFIX ${QZGUI_PC_TO_PREFIX})
# qzgui_pkgconfig(<module> <library> <description> <required modules>)
function(qzgui_pkgconfig module library description requires)
  set(QZGUI_PC_NAME ${module})
  set(QZGUI_PC_LIBRARY ${library})
  set(QZGUI_PC_DESCRIPTION ${description})
  set(QZGUI_PC_REQUIRES ${requires})
  configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/qzgui.pc.in
                 ${PROJECT_BINARY_DIR}/pkgconfig/${module}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/${module}.pc DESTINATION ${QZGUI_PKGCONFIG_DIR}
          COMPONENT Development)
endfunction()
qzgui_pkgconfig(qzgui QzGui "Game GUI library: dialogs, controls and edit boxes" "")
if(TARGET QzGuiCairo)
  qzgui_pkgconfig(qzgui-cairo QzGuiCairo "QzGui's cairo render device" "qzgui")
endif()
if(TARGET QzGuiDrawList)
  qzgui_pkgconfig(qzgui-drawlist QzGuiDrawList "QzGui's draw-list render device" "qzgui")
endif()
if(TARGET QzGuiSdl)
  qzgui_pkgconfig(qzgui-sdl QzGuiSdl "QzGui's SDL2 presenter of draw lists" "qzgui-drawlist")
endif()
