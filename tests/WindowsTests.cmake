# Which tests the Windows build runs. The library there uses the system's USER32, IMM32, GDI32
# and KERNEL32 in place of the hosted window system, so the tests that drive the library through
# the null and recording devices run against the real system, while the cairo, draw-list, SDL,
# demo and tool tests stay with the Linux build, which builds what they need.

# Found at ctest time, not at build time: the build needs no Wine.
set(QZGUI_DISCOVERY_MODE DISCOVERY_MODE PRE_TEST)

# The folders of unit/ built for Windows. Not platform/system_edit, system_kernel and
# system_windows: they test the hosted stand-ins of the EDIT class, KERNEL32 and USER32, which a
# Windows build does not contain, and lean on what the stand-ins do on purpose (profile files
# beside the program, handles that never validate again, a reset that forgets window classes).
set(QZGUI_WINDOWS_TEST_DIRS
  controls
  diagnostics
  effects
  framework_basewindow
  framework_dialog
  framework_manager
  layout
  platform_render
  platform_services
  support
  textinput
  textinput_editex)

# Files of those folders left out, each for the reason given.
set(QZGUI_WINDOWS_TEST_EXCLUDED
  # TMPDIR and setenv are POSIX; Windows programs take their temporary folder from TMP.
  unit/support/TempFolderTest.cpp
  # Cursors come from files the test writes and tells apart by name (Host::DescribeCursor); the
  # system's LoadCursorFromFile needs real cursor images and does not say which file a cursor
  # came from.
  unit/layout/QzCursorMgrTest.cpp
  # Switches the ANSI code page to UTF-8, which a Windows process cannot, and runs the rscdump
  # tool through a POSIX shell.
  unit/diagnostics/DumpRscFixtureTest.cpp
  # Loads damaged PE files as data modules: the Windows loader refuses them before the reader
  # sees them (the hosted LoadLibraryEx takes any file). The reader is the same code on Linux.
  unit/diagnostics/DumpRscHostileTest.cpp
  # Input method results come from the hosted IMM (Host::InjectImeResult) and beeps are counted
  # (Host::TakeBeeps); the real IMM32 composes with an input method, and MessageBeep sounds.
  unit/textinput/editex/EditExInputTest.cpp)

# qzgui_windows_test_sources(<name> <sources variable>): narrows the sources of a test program
# to what the Windows build runs; empty when the folder is not built for Windows.
function(qzgui_windows_test_sources name sources_var)
  if(NOT name IN_LIST QZGUI_WINDOWS_TEST_DIRS)
    set(${sources_var} "" PARENT_SCOPE)
    return()
  endif()
  set(kept "")
  foreach(source ${${sources_var}})
    file(RELATIVE_PATH rel ${CMAKE_CURRENT_SOURCE_DIR} ${source})
    if(NOT rel IN_LIST QZGUI_WINDOWS_TEST_EXCLUDED)
      list(APPEND kept ${source})
    endif()
  endforeach()
  set(${sources_var} ${kept} PARENT_SCOPE)
endfunction()
