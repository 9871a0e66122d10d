# Debian packages of an installed build (`cpack` in the build folder, or `cpack -G DEB`): the
# shared libraries as libqzgui0, and libqzgui-dev with the headers, the CMake package and the
# pkg-config files, depending on exactly that libqzgui0. dpkg-shlibdeps fills in what the
# libraries need from Debian (cairo, pango, SDL2, the C++ runtime).
set(QZGUI_PACKAGE_MAINTAINER "QzGui maintainers <maintainers@qzgui.invalid>"
    CACHE STRING "Maintainer field of the Debian packages")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qzgui)
set(CPACK_PACKAGE_VENDOR "QzGui")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${QZGUI_PACKAGE_MAINTAINER})
set(CPACK_STRIP_FILES ON)

set(CPACK_COMPONENTS_ALL Runtime Development)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS Runtime)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${QZGUI_PACKAGE_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libqzgui${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# The first line of a description is the package's synopsis.
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
    "game GUI library: dialogs, controls and edit boxes\nThe shared libraries: QzGui, its cairo and draw-list render devices and the SDL2\npresenter of draw lists.")
# A shlibs file for the packages built against these libraries; before 1.0 only this very
# version provides the interface.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libqzgui-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "game GUI library: development files\nHeaders under /usr/include/QzGui, the CMake package QzGui and the pkg-config\nmodules qzgui, qzgui-cairo, qzgui-drawlist and qzgui-sdl.")

include(CPack)
