# One interface target carries what every target is compiled with: warnings and sanitizers.
add_library(tamrel_options INTERFACE)
target_compile_options(tamrel_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wmissing-declarations
  $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local>
  $<$<BOOL:${TAMREL_WERROR}>:-Werror>)
if(TAMREL_SANITIZE)
  target_compile_options(tamrel_options INTERFACE
    -fsanitize=${TAMREL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tamrel_options INTERFACE -fsanitize=${TAMREL_SANITIZE})
endif()
