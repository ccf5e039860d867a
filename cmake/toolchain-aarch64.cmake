# Debian's cross compiler; programs run under qemu-user. With ZR_CLANG, Clang with Debian's cross
# libraries and the libc++ that scripts/libcxx-arm64 lays out.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZR_CLANG)
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
if(ZR_CLANG)
  set(libcxx "${CMAKE_CURRENT_LIST_DIR}/../build/libcxx-arm64")
  if(NOT EXISTS "${libcxx}")
    message(FATAL_ERROR "scripts/libcxx-arm64 has to run first")
  endif()
  set(CMAKE_CXX_COMPILER clang++)
  set(CMAKE_CXX_COMPILER_TARGET aarch64-linux-gnu)
  set(CMAKE_CXX_FLAGS_INIT "--start-no-unused-arguments -nostdinc++ -nostdlib++ --end-no-unused-arguments -isystem ${libcxx}/include/c++/v1")
  set(CMAKE_CXX_STANDARD_LIBRARIES "-L${libcxx}/lib -Wl,-rpath,${libcxx}/lib -l:libc++.so.1 -l:libc++abi.so.1 -l:libunwind.so.1")
else()
  set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
endif()
# A processor that signs return addresses (not by the slow algorithm of the architecture) and looks
# where jumps land.
set(CMAKE_CROSSCOMPILING_EMULATOR
  "qemu-aarch64;-L;/usr/aarch64-linux-gnu;-cpu;max,pauth-impdef=on")
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_FIND_ROOT_PATH /usr/aarch64-linux-gnu)
