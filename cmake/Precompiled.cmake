# Programs that include little but the public headers share one precompiled form of these. Every source still includes what
# it uses: scripts/clangwarnings.py reads them all without.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/precompiled.cpp CONTENT "")
add_library(vxswf_precompiled OBJECT EXCLUDE_FROM_ALL ${PROJECT_BINARY_DIR}/precompiled.cpp)
target_link_libraries(vxswf_precompiled PRIVATE vxswf vxswf_flags)
target_precompile_headers(vxswf_precompiled PRIVATE
  <vxswf.h> <algorithm> <cstring> <iostream> <map> <memory> <string> <vector>)

function(vx_precompile_headers program)
  target_precompile_headers(${program} REUSE_FROM vxswf_precompiled)
endfunction()
