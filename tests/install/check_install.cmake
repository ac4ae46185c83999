# Installs the build into a scratch prefix, then builds and runs a consumer
# with pkg-config and another with find_package(zvpsp).
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix}
  RESULT_VARIABLE rc OUTPUT_QUIET)
if(rc)
  message(FATAL_ERROR "install failed")
endif()
file(GLOB_RECURSE pcfile ${prefix}/*/zvpsp8.pc)
get_filename_component(pcdir "${pcfile}" DIRECTORY)
get_filename_component(libdir "${pcdir}" DIRECTORY)

# pkg-config
set(ENV{PKG_CONFIG_PATH} ${pcdir})
execute_process(COMMAND pkg-config --cflags --libs zvpsp8 OUTPUT_VARIABLE flags
  OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "pkg-config does not know zvpsp8")
endif()
separate_arguments(flags UNIX_COMMAND "${flags}")
separate_arguments(cflags UNIX_COMMAND "${CFLAGS}")
execute_process(COMMAND ${CC} ${cflags} ${SOURCE_DIR}/consumer.c ${flags}
  -Wl,-rpath,${libdir} -o ${WORK_DIR}/consumer_pc RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "pkg-config consumer failed to build")
endif()
execute_process(COMMAND ${WORK_DIR}/consumer_pc RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "pkg-config consumer failed to run")
endif()

# find_package
set(args -G Ninja -S ${SOURCE_DIR} -B ${WORK_DIR}/cm -DCMAKE_PREFIX_PATH=${prefix})
if(TOOLCHAIN)
  list(APPEND args -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
endif()
execute_process(COMMAND ${CMAKE_COMMAND} ${args} RESULT_VARIABLE rc OUTPUT_QUIET)
if(rc)
  message(FATAL_ERROR "find_package consumer failed to configure")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/cm RESULT_VARIABLE rc OUTPUT_QUIET)
if(rc)
  message(FATAL_ERROR "find_package consumer failed to build")
endif()
execute_process(COMMAND ${WORK_DIR}/cm/consumer RESULT_VARIABLE rc)
if(rc)
  message(FATAL_ERROR "find_package consumer failed to run")
endif()
