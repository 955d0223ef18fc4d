# What is fuzzed: fuzz/<target>_fuzzer.cpp each, with a corpus in fuzz/corpus/<target>/. What those of
# the module need is built for every machine.
set(jwnls_module_fuzz_targets date_reading format number_formatting number_reading record)
set(jwnls_library_fuzz_targets extension layout library_dates library_numbers locale_name zone)
set(jwnls_tool_fuzz_targets command_line iso8601 table)
set(jwnls_fuzz_targets ${jwnls_module_fuzz_targets})
if(NOT CMAKE_CROSSCOMPILING)
  list(APPEND jwnls_fuzz_targets ${jwnls_library_fuzz_targets} ${jwnls_tool_fuzz_targets})
endif()

# jwnls_fuzz_sources(<target> <program>): what a program that runs the target is made of
function(jwnls_fuzz_sources target program)
  target_sources(${program} PRIVATE "${PROJECT_SOURCE_DIR}/fuzz/${target}_fuzzer.cpp")
  if(target IN_LIST jwnls_module_fuzz_targets)
    set(tests "${PROJECT_SOURCE_DIR}/tests")
    target_sources(${program} PRIVATE "${tests}/support/fake_host.cpp"
                   "${tests}/support/fake_objects.cpp"
                   "${tests}/module/format_numbers/number_model.cpp")
    target_link_libraries(${program} PRIVATE jwnls_module jwnls_module_exports)
  elseif(target IN_LIST jwnls_library_fuzz_targets)
    target_link_libraries(${program} PRIVATE jwnls_library)
    add_dependencies(${program} jwnlsloc jwnlsldb jwemsg)  # which it loads from beside it
  else()
    target_link_libraries(${program} PRIVATE jwnls_tool)
    add_dependencies(${program} jwnlsloc jwnlsldb jwemsg)
  endif()
endfunction()
