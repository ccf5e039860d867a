# What our own targets are compiled with. Each is linked PRIVATE, so that programs which add this
# project keep their own flags.

set(CMAKE_CXX_EXTENSIONS OFF)

# What is built finds its libraries beside it, wherever the folder stands.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

add_library(zr_warnings INTERFACE)
target_compile_features(zr_warnings INTERFACE cxx_std_20)
target_compile_options(zr_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wcast-qual -Wundef
  -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wimplicit-fallthrough
  $<$<BOOL:${ZR_WERROR}>:-Werror>)

# The library never throws, but a fatal handler of the caller's may throw through it: hence the
# unwind tables.
add_library(zr_library_options INTERFACE)
target_compile_options(zr_library_options INTERFACE
  -fno-exceptions -fno-rtti -fasynchronous-unwind-tables
  -fvisibility=hidden -fvisibility-inlines-hidden)

if(ZR_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
                      -fno-sanitize=vptr  # the library has no RTTI to look at
                      -g1)  # stack traces with lines
  add_link_options(-fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    target_compile_options(zr_library_options INTERFACE -fsanitize=unsigned-integer-overflow)
  endif()
endif()

if(ZR_SANITIZE_THREADS)
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
endif()

# No undefined symbol is left to chance. Only the sanitizers' own come from the program.
# Calls inside a library are bound when it is linked, which leaves less to do when it is loaded.
add_library(zr_shared_options INTERFACE)
target_compile_options(zr_shared_options INTERFACE -fvisibility-inlines-hidden)
target_link_options(zr_shared_options INTERFACE -Wl,-Bsymbolic-functions)
if(NOT ZR_SANITIZE AND NOT ZR_SANITIZE_THREADS)
  target_link_options(zr_shared_options INTERFACE -Wl,--no-undefined)
endif()

# What keeps a fault in memory from being used; sanitizers have their own ways. What shows in the
# files is what scripts/check-hardening looks for. Debian's crti.o has shadow stacks' code, but not
# their note, and no landing pads: hence -z shstk, and no -z ibt.
add_library(zr_hardening INTERFACE)
if(NOT ZR_SANITIZE)
  target_compile_options(zr_hardening INTERFACE
    -fstack-protector-strong
    "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>")
  target_link_options(zr_hardening INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
  # Clang 14 has none for AArch64.
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang" OR CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
    target_compile_options(zr_hardening INTERFACE -fstack-clash-protection)
  endif()
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
    # Calls need no table of jumps, whose places would have landing pads too, as all names are bound
    # at the start.
    target_compile_options(zr_hardening INTERFACE -fcf-protection=full -fno-plt)
    target_link_options(zr_hardening INTERFACE -Wl,-z,shstk)
  elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
    target_compile_options(zr_hardening INTERFACE -mbranch-protection=standard)
  endif()
endif()
