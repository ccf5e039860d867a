# What our own targets are compiled with. Each is linked PRIVATE, so that programs which add this
# project keep their own flags.

set(CMAKE_CXX_EXTENSIONS OFF)

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

# No undefined symbol is left to chance. Only the sanitizers' own come from the program.
# Calls inside a library are bound when it is linked, which leaves less to do when it is loaded.
add_library(zr_shared_options INTERFACE)
target_compile_options(zr_shared_options INTERFACE -fvisibility-inlines-hidden)
target_link_options(zr_shared_options INTERFACE -Wl,-Bsymbolic-functions)
if(NOT ZR_SANITIZE)
  target_link_options(zr_shared_options INTERFACE -Wl,--no-undefined)
endif()
