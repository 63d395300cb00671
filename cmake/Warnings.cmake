# What every target of the project is compiled with.
add_library(vxswf_flags INTERFACE)
target_compile_options(vxswf_flags INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Woverloaded-virtual
  # A fused multiply-add rounds once where the format's arithmetic rounds twice.
  -ffp-contract=off)
# Files beyond 2 GiB, where offsets have 32 bits otherwise.
target_compile_definitions(vxswf_flags INTERFACE _FILE_OFFSET_BITS=64)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(i.86|x86)$")
  # The x87 rounds to more bits than a double has, and when depends on the compiler.
  target_compile_options(vxswf_flags INTERFACE -msse2 -mfpmath=sse)
endif()
if(VXSWF_BUILD_FUZZERS)
  # Lets libFuzzer see which branches an input takes.
  target_compile_options(vxswf_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(VXSWF_WERROR)
  target_compile_options(vxswf_flags INTERFACE -Werror)
endif()
