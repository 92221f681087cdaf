# lunevra_library(NAME SOURCES… [USES …] [LINKS …])
# One static library, one folder. USES names other folders' targets, which its headers may include;
# LINKS names libraries that only its sources see.
function(lunevra_library name)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;USES;LINKS")
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC lunevra_options ${ARG_USES} PRIVATE ${ARG_LINKS})
endfunction()
