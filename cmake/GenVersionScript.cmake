# Writes a linker version script that exports exactly the names of the X(name)
# lines in the export list IN, to OUT. The list is read through the C
# preprocessor CC, as the forwarders and the slots read it, so its per-family
# includes are followed; the preprocessor also writes DEPFILE, which makes OUT
# depend on every file the list includes.
execute_process(
  COMMAND ${CC} -E -P -x c -MD -MF ${DEPFILE} -MT ${OUT} ${IN}
  OUTPUT_VARIABLE text RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "preprocessing the export list ${IN} failed")
endif()
string(REGEX MATCHALL "X\\([A-Za-z0-9_]+\\)" items "${text}")
set(body "{\n  global:\n")
foreach(item IN LISTS items)
  string(REGEX REPLACE "X\\(([A-Za-z0-9_]+)\\)" "\\1" name "${item}")
  string(APPEND body "    ${name};\n")
endforeach()
string(APPEND body "  local:\n    *;\n};\n")
file(WRITE "${OUT}.tmp" "${body}")
file(COPY_FILE "${OUT}.tmp" "${OUT}" ONLY_IF_DIFFERENT)
