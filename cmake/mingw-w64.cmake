# Cross-building for Windows (x86-64) with Debian's mingw-w64 and a Qt that was built for it. The
# folder of that Qt is the cache variable ZDR_WINDOWS_QT, or the environment's.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
# With the threads of POSIX, on which std::thread of this compiler's library stands.
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)

# Projects that CMake makes to try something out read this file, too.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZDR_WINDOWS_QT)
if(NOT ZDR_WINDOWS_QT)
    set(ZDR_WINDOWS_QT "$ENV{ZDR_WINDOWS_QT}" CACHE PATH "Folder of a Qt built for mingw-w64")
endif()
if(NOT EXISTS "${ZDR_WINDOWS_QT}/lib/cmake/Qt6")
    message(FATAL_ERROR
        "ZDR_WINDOWS_QT is \"${ZDR_WINDOWS_QT}\", which is not the folder of a Qt 6 for mingw-w64")
endif()
list(APPEND CMAKE_PREFIX_PATH "${ZDR_WINDOWS_QT}")

# moc, uic and rcc are those of this machine's Qt, which has to be of the same version.
set(QT_HOST_PATH /usr CACHE PATH "Prefix of the Qt whose tools run on this machine")
file(GLOB host_tools LIST_DIRECTORIES true "${QT_HOST_PATH}/lib/*/cmake/Qt6HostInfo")
foreach(folder IN LISTS host_tools)
    cmake_path(GET folder PARENT_PATH folder)
    set(QT_HOST_PATH_CMAKE_DIR "${folder}" CACHE PATH "CMake files of the Qt whose tools run here")
endforeach()

set(CMAKE_FIND_ROOT_PATH /usr/${triple} "${ZDR_WINDOWS_QT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
