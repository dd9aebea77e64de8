# velumo_add_form: compiles a TOML form with velform when the target builds.
# Included by the project itself and by the installed package configuration.
#
#   velumo_add_form(<target> <form.toml> [PREFIX <prefix>] [ASSET_DIR <dir>]
#                   [INSTALL_DESTINATION <dir>] [COMPILER <target>])
#
# Writes <stem>.vfm, <stem>.vtx and <stem>.h (stem: the form's name up to its
# first dot) into ${CMAKE_CURRENT_BINARY_DIR}/velumo_forms/<target>/, puts that
# directory on the target's include path and defines <PREFIX>_FORM_FILE and
# <PREFIX>_TEXT_FILE, string literals with the absolute paths of the compiled
# files.  With INSTALL_DESTINATION the two files are installed there and the
# definitions name the installed files, ${CMAKE_INSTALL_PREFIX}/<dir>/...
# ASSET_DIR is passed to velform --asset-dir: the directory the application
# finds the form's pictures and fonts in at run time (default: the form's
# own directory).  PREFIX defaults to the stem in upper case.  COMPILER names
# the program that compiles (default: velform).
function(velumo_add_form target form)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "PREFIX;ASSET_DIR;INSTALL_DESTINATION;COMPILER" "")
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "velumo_add_form: unknown arguments ${arg_UNPARSED_ARGUMENTS}")
  endif()
  get_filename_component(form_path "${form}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
  get_filename_component(form_name "${form_path}" NAME)
  string(REGEX REPLACE "\\..*$" "" stem "${form_name}")
  if(arg_PREFIX)
    set(prefix "${arg_PREFIX}")
  else()
    string(TOUPPER "${stem}" prefix)
    string(MAKE_C_IDENTIFIER "${prefix}" prefix)
  endif()
  set(out_dir "${CMAKE_CURRENT_BINARY_DIR}/velumo_forms/${target}")
  set(out "${out_dir}/${stem}")
  set(options --prefix "${prefix}")
  if(DEFINED arg_ASSET_DIR)
    list(APPEND options "--asset-dir=${arg_ASSET_DIR}")
  endif()
  # In the velumo build the tool is the target velform, else velumo::velform.
  if(arg_COMPILER)
    set(tool ${arg_COMPILER})
  else()
    set(tool velumo::velform)
    get_target_property(aliased ${tool} ALIASED_TARGET)
    if(aliased)
      set(tool ${aliased})
    endif()
  endif()
  add_custom_command(
    OUTPUT "${out}.vfm" "${out}.vtx" "${out}.h"
    COMMAND ${tool} compile "${form_path}" -o "${out}" ${options}
    DEPENDS "${form_path}" ${tool}
    COMMENT "Compiling form ${form_name}"
    VERBATIM)
  target_sources(${target} PRIVATE "${out}.h")
  target_include_directories(${target} PRIVATE "${out_dir}")
  if(arg_INSTALL_DESTINATION)
    install(FILES "${out}.vfm" "${out}.vtx" DESTINATION "${arg_INSTALL_DESTINATION}")
    set(files_dir "${CMAKE_INSTALL_PREFIX}/${arg_INSTALL_DESTINATION}")
  else()
    set(files_dir "${out_dir}")
  endif()
  target_compile_definitions(${target} PRIVATE
    "${prefix}_FORM_FILE=\"${files_dir}/${stem}.vfm\""
    "${prefix}_TEXT_FILE=\"${files_dir}/${stem}.vtx\"")
endfunction()
