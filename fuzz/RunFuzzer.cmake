# Runs one fuzzer under ctest: its seeds are copied into the build folder first, because libFuzzer
# adds what it finds to the corpus folder it is given and the repository must stay untouched.
#   cmake -DFUZZER=<exe> -DSEEDS=<folder> -DWORK=<folder> -DSECONDS=<n> -P RunFuzzer.cmake
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/corpus ${WORK}/artifacts)
file(COPY ${SEEDS}/ DESTINATION ${WORK}/corpus)
execute_process(
    COMMAND ${FUZZER} -max_total_time=${SECONDS} -timeout=10 -print_final_stats=1
        -artifact_prefix=${WORK}/artifacts/ ${WORK}/corpus
    RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${FUZZER} failed (${result}); the input that did it is in ${WORK}/artifacts")
endif()
