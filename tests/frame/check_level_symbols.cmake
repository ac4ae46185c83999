# Fails if a function the library defines lives outside the namespace of its
# processor level (zvp::${LEVEL}::). The same sources compiled for another
# level must not define a function of the same name, or the two levels'
# inline functions would meet at link time. Allowed besides: the exported C
# names (zvp...), standard-library templates instantiated on the level's
# types, and the functions and labels the compiler, assembler and C runtime
# add.
# Mangled names: a function in zvp::LEVEL:: (a member, a template, a lambda
# or a clone of one included) starts with _ZN3zvp<len>LEVEL, possibly with
# qualifiers after the N, or _ZZN... for what is local to such a function.
string(LENGTH "${LEVEL}" levelLen)
set(levelPrefix "^_ZZ?N[KVRO]*3zvp${levelLen}${LEVEL}")
execute_process(COMMAND ${NM} --defined-only ${LIB}
  OUTPUT_VARIABLE out RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "${NM} failed on ${LIB}")
endif()
string(REPLACE ";" "\\;" out "${out}")
string(REPLACE "\n" ";" lines "${out}")
set(bad)
set(inLevel 0)
foreach(line IN LISTS lines)
  if(NOT line MATCHES "^[0-9a-fA-F]+ ([A-Za-z]) (.*)$")
    continue()
  endif()
  set(kind "${CMAKE_MATCH_1}")
  set(name "${CMAKE_MATCH_2}")
  if(NOT kind MATCHES "^[TtWwi]$")
    continue()
  endif()
  if(name MATCHES "${levelPrefix}")
    math(EXPR inLevel "${inLevel} + 1")
  elseif(name MATCHES "^zvp[A-Za-z0-9_]*$")
  elseif(name MATCHES "^_ZN?[KVRO]*St.*3zvp${levelLen}${LEVEL}")
    # A standard-library template instantiated on a type of this level: the
    # level is part of its name, so another level's copy is a different one.
  elseif(name MATCHES "^(_init|_fini|frame_dummy|register_tm_clones|deregister_tm_clones|__do_global_dtors_aux)$"
         OR name MATCHES "^_GLOBAL__sub_I_"
         OR name MATCHES "^_sub_[DI]_[0-9]+_[0-9]+$"  # sanitizer module constructors
         OR name MATCHES "^__x86\\.get_pc_thunk\\."
         OR name MATCHES "^\\.L")  # assembler-local labels (i386 jump tables)
  else()
    list(APPEND bad "${kind} ${name}")
  endif()
endforeach()
if(inLevel EQUAL 0)
  message(FATAL_ERROR "no function of zvp::${LEVEL}:: found in ${LIB}: is it stripped?")
endif()
if(bad)
  list(JOIN bad "\n  " text)
  message(FATAL_ERROR "functions outside zvp::${LEVEL}::\n  ${text}")
endif()
message(STATUS "${inLevel} functions, all in zvp::${LEVEL}::")
