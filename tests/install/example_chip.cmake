# The committed example chip is the one that its script makes.
cmake_minimum_required(VERSION 3.21)

execute_process(COMMAND ${PYTHON} -B ${EXAMPLES}/make_smallchip.py -o ${OUTPUT} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "make_smallchip.py ended with ${result}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUTPUT} ${EXAMPLES}/smallchip.gds RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${EXAMPLES}/smallchip.gds differs from what make_smallchip.py makes: run it and commit the result")
endif()
