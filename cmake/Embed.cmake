# celldesk_embed(TARGET FOLDER FILES...): compiles files of FOLDER into TARGET, as the table that
# ui/resources/embedded_files.h declares. Run as a script (-DFOLDER= -DFILES= -DOUT=) it writes the source.
if(CMAKE_SCRIPT_MODE_FILE)
  string(REPLACE "," ";" FILES "${FILES}")
  set(arrays "")
  set(rows "")
  set(count 0)
  foreach(file ${FILES})
    file(READ ${FOLDER}/${file} hex HEX)
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
    string(APPEND arrays "const unsigned char file${count}[] = {${bytes}0};\n")
    string(APPEND rows "    {\"${file}\", file${count}, sizeof(file${count}) - 1},\n")
    math(EXPR count "${count} + 1")
  endforeach()
  file(WRITE ${OUT} "#include \"ui/resources/embedded_files.h\"\n\nnamespace celldesk {\nnamespace {\n${arrays}"
    "}  // namespace\n\nconst EmbeddedFile kEmbeddedFiles[] = {\n${rows}};\n"
    "const std::size_t kEmbeddedFileCount = ${count};\n\n}  // namespace celldesk\n")
  return()
endif()

function(celldesk_embed target folder)
  set(out ${CMAKE_CURRENT_BINARY_DIR}/${target}_files.cpp)
  list(TRANSFORM ARGN PREPEND ${folder}/ OUTPUT_VARIABLE paths)
  string(REPLACE ";" "," files "${ARGN}")
  add_custom_command(OUTPUT ${out}
    COMMAND ${CMAKE_COMMAND} -DFOLDER=${folder} -DFILES=${files} -DOUT=${out} -P ${CMAKE_SOURCE_DIR}/cmake/Embed.cmake
    DEPENDS ${paths} ${CMAKE_SOURCE_DIR}/cmake/Embed.cmake VERBATIM)
  target_sources(${target} PRIVATE ${out})
endfunction()
