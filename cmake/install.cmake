# What `cmake --install` puts where. Components: `library` (what programs need to run), `dev` (what
# compiling them needs), `program`.
include(CMakePackageConfigHelpers)

set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/jwnls")
install(TARGETS jwnls_shared EXPORT jwnls_targets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT library NAMELINK_COMPONENT dev)
install(TARGETS jwnls_static EXPORT jwnls_targets
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dev)
install(TARGETS jwnlsloc jwnlsldb jwemsg
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}/jwnls" COMPONENT library)
if(JWNLS_TOOL)
  install(TARGETS jwnls RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT program)
endif()

# jwnls_page(<file> <folder> <what the program is asked for>...): a text about the program that it
# writes itself, installed below the folder of shared data.
set(pages)
function(jwnls_page file folder)
  set(page "${PROJECT_BINARY_DIR}/pages/${folder}/${file}")
  get_filename_component(page_folder "${page}" DIRECTORY)
  file(MAKE_DIRECTORY "${page_folder}")
  add_custom_command(OUTPUT "${page}" COMMAND jwnls ${ARGN} > "${page}" DEPENDS jwnls VERBATIM)
  install(FILES "${page}" DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/${folder}" COMPONENT program)
  set(pages ${pages} "${page}" PARENT_SCOPE)
endfunction()
if(JWNLS_TOOL AND (NOT CMAKE_CROSSCOMPILING OR CMAKE_CROSSCOMPILING_EMULATOR))
  jwnls_page(jwnls.1 man/man1 --manual)
  jwnls_page(jwnls bash-completion/completions completions bash)
  jwnls_page(_jwnls zsh/site-functions completions zsh)
  jwnls_page(jwnls.fish fish/vendor_completions.d completions fish)
  add_custom_target(jwnls_pages ALL DEPENDS ${pages})
endif()

# The ABI's headers name each other by the place that they have here, "abi/x.h". Installed they
# stand under jwnls/, where a neighbour is found by its name alone.
file(GLOB abi_headers CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/abi/*.h")
set(installed_abi "${PROJECT_BINARY_DIR}/installed_headers/abi")
file(MAKE_DIRECTORY "${installed_abi}")
foreach(header ${abi_headers})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${header}")
  get_filename_component(name "${header}" NAME)
  file(READ "${header}" text)
  string(REPLACE "#include \"abi/" "#include \"" text "${text}")
  file(CONFIGURE OUTPUT "${installed_abi}/${name}" CONTENT "${text}" @ONLY)
  list(APPEND installed_abi_headers "${installed_abi}/${name}")
endforeach()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/jwnls"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT dev FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")
install(FILES ${installed_abi_headers}
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/jwnls/abi" COMPONENT dev)

install(EXPORT jwnls_targets NAMESPACE jwnls:: DESTINATION "${package_folder}" COMPONENT dev)
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/jwnls-config.cmake.in"
  "${PROJECT_BINARY_DIR}/jwnls-config.cmake" INSTALL_DESTINATION "${package_folder}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/jwnls-config-version.cmake"
  COMPATIBILITY SameMajorVersion)
install(FILES "${PROJECT_BINARY_DIR}/jwnls-config.cmake"
  "${PROJECT_BINARY_DIR}/jwnls-config-version.cmake"
  DESTINATION "${package_folder}" COMPONENT dev)

# Folders as seen from where jwnls.pc stands, so that what is installed can be moved as a whole.
file(RELATIVE_PATH prefix_from_pc "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig"
     "${CMAKE_INSTALL_PREFIX}")
configure_file("${PROJECT_SOURCE_DIR}/cmake/jwnls.pc.in" "${PROJECT_BINARY_DIR}/jwnls.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/jwnls.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT dev)

# Two packages may not have the same file, so each has its own folder for the terms.
set(terms "${PROJECT_SOURCE_DIR}/LICENSE" "${PROJECT_SOURCE_DIR}/NOTICE")
set(terms_folder "${CMAKE_INSTALL_DATAROOTDIR}/doc")
install(FILES ${terms} DESTINATION "${terms_folder}/libjwnls1" COMPONENT library)
install(FILES ${terms} DESTINATION "${terms_folder}/libjwnls-dev" COMPONENT dev)
install(FILES ${terms} DESTINATION "${terms_folder}/jwnls" COMPONENT program)
