# Builds runtime/cpp on its own, installs it into a scratch prefix, builds a
# consumer project against the installed CMake package and runs it on a
# small scene. Run with -DSOURCE_DIR=<project> -DWORK_DIR=<scratch>
# [-DLAUNCHER=ccache].
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)
set(launcher)
if(LAUNCHER)
  set(launcher -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})
endif()

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed (${result}): ${ARGN}\n${out}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/runtime/cpp -B ${WORK_DIR}/runtime -DCMAKE_BUILD_TYPE=Release
    -DPLAX_RUNTIME_EXAMPLES=OFF ${launcher})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/runtime -j2)
run(${CMAKE_COMMAND} --install ${WORK_DIR}/runtime --prefix ${prefix})
foreach(installed include/plax/runtime.h include/plax/box2d/box2dscene.h)
  if(NOT EXISTS ${prefix}/${installed})
    message(FATAL_ERROR "the install lacks ${installed}")
  endif()
endforeach()
file(GLOB_RECURSE package_files ${prefix}/*PlaxRuntimeConfig.cmake)
if(NOT package_files)
  message(FATAL_ERROR "the install lacks the CMake package")
endif()

run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/runtime/consumer -B ${WORK_DIR}/consumer -DCMAKE_PREFIX_PATH=${prefix}
    ${launcher})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/consumer)
file(WRITE ${WORK_DIR}/level.json [[{"body": [
  {"name": "ground", "type": 0, "fixture": [{"edge": {"vertex1": {"x": -5, "y": 0}, "vertex2": {"x": 5, "y": 0}}}]},
  {"name": "ball", "type": 2, "position": {"x": 0, "y": "40A00000"}, "customProperties": [{"name": "lives", "int": 3}],
   "fixture": [{"density": 1, "circle": {"radius": 0.5}}]}]}]])
run(${WORK_DIR}/consumer/consumer ${WORK_DIR}/level.json)
# One second of free fall from 5 m: about 4.9 m lower.
if(NOT last_output MATCHES "^ball 0\\.[0-9][0-9] 3")
  message(FATAL_ERROR "unexpected output of the consumer: ${last_output}")
endif()
message(STATUS "installed runtime found and used: ${last_output}")
