# Builds programs for 64-bit Windows with Debian's mingw-w64 compiler. The environment variable MESHVANE_WINDOWS_QT
# names the folder of a static Qt for it; scripts/windows.sh builds one and sets the variable.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(mingw x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${mingw}-gcc-posix) # the kind with std::thread, as Qt wants it
set(CMAKE_CXX_COMPILER ${mingw}-g++-posix)
set(CMAKE_RC_COMPILER ${mingw}-windres)
# Without this the compiler's own libraries would have to lie beside each program.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

set(CMAKE_FIND_ROOT_PATH $ENV{MESHVANE_WINDOWS_QT} /usr/${mingw})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_PREFIX_PATH $ENV{MESHVANE_WINDOWS_QT})
