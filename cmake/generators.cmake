# The programs that write tables at build time. They run on the building machine: for another one,
# build the target jwnls_generators here first and name its folder, JWNLS_GENERATORS.
find_file(UNICODE_DATA UnicodeData.txt PATHS /usr/share/unicode /usr/share/unicode/ucd
          DOC "The Unicode character database's main file" NO_CMAKE_FIND_ROOT_PATH)
if(NOT UNICODE_DATA)
  message(FATAL_ERROR "UnicodeData.txt not found: set UNICODE_DATA (Debian: unicode-data)")
endif()
if(CMAKE_CROSSCOMPILING AND NOT JWNLS_GENERATORS)
  message(FATAL_ERROR "Compiling for another machine takes generators that run on this one: build "
                      "the target jwnls_generators here, then set JWNLS_GENERATORS to its folder")
endif()

add_custom_target(jwnls_generators)
# jwnls_generator(<name> <source pattern> [libraries...])
function(jwnls_generator name pattern)
  if(JWNLS_GENERATORS)
    if(NOT EXISTS "${JWNLS_GENERATORS}/${name}")
      message(FATAL_ERROR "JWNLS_GENERATORS: no ${name} in ${JWNLS_GENERATORS}")
    endif()
    add_executable(${name} IMPORTED GLOBAL)
    set_target_properties(${name} PROPERTIES IMPORTED_LOCATION "${JWNLS_GENERATORS}/${name}")
    return()
  endif()
  file(GLOB sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/generators/${pattern}")
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE jwnls_flags ${ARGN})
  add_dependencies(jwnls_generators ${name})
endfunction()

if(NOT JWNLS_GENERATORS)
  # The locale tables are read out of ICU; nothing of ICU is needed at run time.
  find_package(ICU REQUIRED COMPONENTS i18n uc)
endif()
jwnls_generator(ldb_generator "locales/*.cpp" ICU::i18n ICU::uc)
jwnls_generator(character_table_generator character_tables.cpp)
jwnls_generator(letter_folding_generator letter_folding.cpp)

# jwnls_unicode_table(<generator> <output> [arguments between input and output...])
function(jwnls_unicode_table generator output)
  get_filename_component(name "${output}" NAME)
  add_custom_command(OUTPUT "${output}"
    COMMAND ${generator} "${UNICODE_DATA}" ${ARGN} "${output}"
    DEPENDS ${generator} "${UNICODE_DATA}"
    COMMENT "Generating ${name}" VERBATIM)
endfunction()

if(NOT JWNLS_GENERATORS)
  # Names of dates are folded at build time by the code that folds what is read.
  set(folding_tables "${PROJECT_BINARY_DIR}/generators/folding_tables.cpp")
  file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/generators")
  jwnls_unicode_table(letter_folding_generator "${folding_tables}")
  target_sources(ldb_generator PRIVATE library/locale_data/name_list.cpp library/locale_data/pattern_parts.cpp
    library/texts/folding.cpp library/texts/utf8.cpp "${folding_tables}")
endif()
