# The manual's hand-written chapters (docs/manual/*.html) travel inside the program: each file's
# text as a raw string in a generated header, remade when a chapter changes.
file(GLOB quorvex_manual_files CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/docs/manual/*.html")
set(quorvex_manual_header "#pragma once\n// Made by CMake from docs/manual/*.html.\nnamespace quorvex::gui {\n")
string(APPEND quorvex_manual_header "struct ManualFragment {\n    const char* file;\n    const char* text;\n};\n")
string(APPEND quorvex_manual_header "inline constexpr ManualFragment k_manual_fragments[] = {\n")
foreach(file ${quorvex_manual_files})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${file}")
  get_filename_component(name "${file}" NAME)
  file(READ "${file}" text)
  string(APPEND quorvex_manual_header "    {\"${name}\", R\"manual(${text})manual\"},\n")
endforeach()
string(APPEND quorvex_manual_header "};\n} // namespace quorvex::gui\n")
file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/generated/manual_fragments.h" CONTENT "${quorvex_manual_header}" @ONLY)
