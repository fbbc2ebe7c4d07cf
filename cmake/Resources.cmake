# Makes named data of the given files for platform::FindResource: NAME.wav becomes the resource NAME
# of type "WAVE", NAME.png the resource NAME of type "PICTURE". Files that do not exist are left out; the
# build takes them up when they appear.
function(embed_resources out_var)
  set(table "")
  set(assembly "    .section .rodata\n")
  set(index 0)
  set(found "")
  set(declarations "")
  foreach(file ${ARGN})
    get_filename_component(path ${file} ABSOLUTE)
    file(GLOB present CONFIGURE_DEPENDS ${path})
    if(NOT present)
      continue()
    endif()
    get_filename_component(name ${file} NAME_WE)
    get_filename_component(extension ${file} LAST_EXT)
    if(extension STREQUAL ".wav")
      set(type WAVE)
    else()
      set(type PICTURE)
    endif()
    string(APPEND assembly
      "    .balign 16\n    .globl resource_${index}\nresource_${index}:\n    .incbin \"${path}\"\n"
      "    .globl resource_${index}_end\nresource_${index}_end:\n    .byte 0\n")
    string(APPEND declarations
      "extern const unsigned char resource_${index}[];\n"
      "extern const unsigned char resource_${index}_end[];\n")
    string(APPEND table
      "    {\"${name}\", \"${type}\", resource_${index}, resource_${index}_end},\n")
    list(APPEND found ${path})
    math(EXPR index "${index} + 1")
  endforeach()
  string(APPEND assembly "    .section .note.GNU-stack,\"\",@progbits\n")
  set(assembly_file ${CMAKE_BINARY_DIR}/resources/Resources.S)
  set(table_file ${CMAKE_BINARY_DIR}/resources/ResourceTable.cpp)
  file(CONFIGURE OUTPUT ${assembly_file} CONTENT "${assembly}" @ONLY)
  file(CONFIGURE OUTPUT ${table_file} CONTENT
"#include \"platform/ResourceTable.h\"

extern \"C\" {
${declarations}}

namespace platform {

const ResourceEntry kResources[] = {
${table}    {nullptr, nullptr, nullptr, nullptr},
};

}  // namespace platform
" @ONLY)
  set_source_files_properties(${assembly_file} PROPERTIES OBJECT_DEPENDS "${found}")
  set(${out_var} ${assembly_file} ${table_file} PARENT_SCOPE)
endfunction()
