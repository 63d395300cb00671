# What every target of the project is compiled with.
add_library(vxswf_flags INTERFACE)
target_compile_options(vxswf_flags INTERFACE
  -Wall -Wextra -Wconversion -Wshadow -Woverloaded-virtual
  # A fused multiply-add rounds once where the format's arithmetic rounds twice.
  -ffp-contract=off)
if(VXSWF_BUILD_FUZZERS)
  # Lets libFuzzer see which branches an input takes.
  target_compile_options(vxswf_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(VXSWF_WERROR)
  target_compile_options(vxswf_flags INTERFACE -Werror)
endif()
