# Cross-compiles for 64-bit Windows with Debian's mingw-w64 toolchain (the posix-thread flavour,
# whose libstdc++ has std::thread and std::mutex). The runtime is linked statically so that a
# program needs no DLL of the compiler beside it, and Wine runs the tests straight from the build
# folder. The tests set their own emulator, Wine (tests/CMakeLists.txt).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(QZGUI_MINGW_PREFIX x86_64-w64-mingw32)

find_program(CMAKE_C_COMPILER NAMES ${QZGUI_MINGW_PREFIX}-gcc-posix ${QZGUI_MINGW_PREFIX}-gcc REQUIRED)
find_program(CMAKE_CXX_COMPILER NAMES ${QZGUI_MINGW_PREFIX}-g++-posix ${QZGUI_MINGW_PREFIX}-g++ REQUIRED)
find_program(CMAKE_RC_COMPILER NAMES ${QZGUI_MINGW_PREFIX}-windres REQUIRED)

set(CMAKE_FIND_ROOT_PATH /usr/${QZGUI_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static-libgcc -static-libstdc++ -static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static-libgcc -static-libstdc++ -static")

