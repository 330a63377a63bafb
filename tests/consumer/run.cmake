# Installs the build tree into a fresh prefix, then configures, builds and
# runs the consumer project against it, and runs the installed vexil.
#   cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DWORK_DIR=... -DBUILD_TYPE=... -DCXX_COMPILER=...
#         [-DSANITIZE=ON] -P run.cmake
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run what)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE code OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT code EQUAL 0)
        message(FATAL_ERROR "${what} failed (${code}):\n${out}\n${err}")
    endif()
    set(last_output "${out}" PARENT_SCOPE)
endfunction()

run("install" ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
foreach(f include/vexil/vxcomp.h include/vexil/vxlabel.h bin/vexil bin/vexil-editor bin/vexil-dictionary
          share/dbus-1/services/VXLEditor.VxlEditorIntf.service share/dbus-1/services/dicmngr.TVexilDicMngr.service)
    if(NOT EXISTS ${prefix}/${f})
        message(FATAL_ERROR "not installed: ${f}")
    endif()
endforeach()
file(GLOB_RECURSE config ${prefix}/VexilConfig.cmake ${prefix}/VexilConfigVersion.cmake)
list(LENGTH config n)
if(NOT n EQUAL 2)
    message(FATAL_ERROR "VexilConfig.cmake and its version file not installed: ${config}")
endif()
file(GLOB_RECURSE plugin ${prefix}/libVexilDesigner.so)
if(NOT plugin)
    message(FATAL_ERROR "Designer plugin not installed under ${prefix}")
endif()

# The consumer is built as the suite was: an instrumented library needs an
# instrumented program.
set(flags -DCMAKE_CXX_COMPILER=${CXX_COMPILER})
if(SANITIZE)
    list(APPEND flags "-DCMAKE_CXX_FLAGS=-fsanitize=address,undefined -fno-omit-frame-pointer"
                      "-DCMAKE_EXE_LINKER_FLAGS=-fsanitize=address,undefined")
endif()
run("consumer configure" ${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=${BUILD_TYPE} ${flags})
run("consumer build" ${CMAKE_COMMAND} --build ${WORK_DIR}/build -j2)
set(ENV{QT_QPA_PLATFORM} offscreen)
run("consumer run" ${WORK_DIR}/build/consumer)
if(NOT last_output MATCHES "Verbraucher\\|Öffnen\\|Bereit")
    message(FATAL_ERROR "consumer printed: ${last_output}")
endif()
run("installed vexil" ${prefix}/bin/vexil stats --help)
message(STATUS "installed into ${prefix}; consumer built and ran")
