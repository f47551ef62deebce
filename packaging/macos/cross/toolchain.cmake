# Builds for macOS on Linux without Apple's SDK, with a pinned compiler that has Darwin's C headers, the framework
# headers of packaging/macos/declarations, and link stubs made from them. script/package-macos sets these variables:
#
#   VANTREL_MAC_ARCH      aarch64 or x86_64
#   VANTREL_MAC_COMPILER  the compiler's driver
#   VANTREL_MAC_SDK       the folder with the framework headers and the link stubs
set(VANTREL_MAC_ARCH "" CACHE STRING "aarch64 or x86_64")
set(VANTREL_MAC_COMPILER "" CACHE FILEPATH "Driver of the cross compiler")
set(VANTREL_MAC_SDK "" CACHE PATH "Framework headers and link stubs")
set(VANTREL_MAC_MINIMUM "13.3" CACHE STRING "Oldest macOS that is served")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES
  VANTREL_MAC_ARCH VANTREL_MAC_COMPILER VANTREL_MAC_SDK VANTREL_MAC_MINIMUM)

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 22.4)  # The kernel of macOS 13.3.
set(CMAKE_SYSTEM_PROCESSOR ${VANTREL_MAC_ARCH})

foreach(language C OBJC)
  set(CMAKE_${language}_COMPILER "${VANTREL_MAC_COMPILER};cc")
endforeach()
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_COMPILER "${VANTREL_MAC_COMPILER};c++")
endforeach()
foreach(language C CXX OBJC OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET ${VANTREL_MAC_ARCH}-macos.${VANTREL_MAC_MINIMUM})
  # In debug builds the driver turns on undefined-behaviour traps, which need its own runtime.
  set(CMAKE_${language}_FLAGS_INIT
    "-fno-sanitize=undefined -Wno-unused-command-line-argument -F \"${VANTREL_MAC_SDK}/System/Library/Frameworks\"")
endforeach()
set(CMAKE_EXE_LINKER_FLAGS_INIT "-L \"${VANTREL_MAC_SDK}/usr/lib\" -Wl,-headerpad_max_install_names")

# The driver takes architecture, system and version from the target, so clear CMake's own flags for Apple's compiler.
set(CMAKE_OSX_SYSROOT "" CACHE STRING "" FORCE)
set(CMAKE_OSX_ARCHITECTURES "" CACHE STRING "" FORCE)
set(CMAKE_OSX_DEPLOYMENT_TARGET "" CACHE STRING "" FORCE)

foreach(tool AR RANLIB LIPO)
  string(TOLOWER ${tool} name)
  find_program(CMAKE_${tool} NAMES llvm-${name}-22 REQUIRED)
endforeach()
find_program(CMAKE_INSTALL_NAME_TOOL NAMES llvm-install-name-tool-22 REQUIRED)

set(CMAKE_FIND_ROOT_PATH ${VANTREL_MAC_SDK})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
