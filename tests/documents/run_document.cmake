# Processes a document of lines with quorvex-cli and compares the text it prints with the text
# expected after every line has been processed, as the math editor would leave it.
#   cmake -DCLI=... -DINPUT=name.in -DEXPECTED=name.out [-DOPTIONS="--method 2"] -P run_document.cmake
# Run beside the document, so that messages name it as "name.in:LINE".
get_filename_component(folder ${INPUT} DIRECTORY)
get_filename_component(name ${INPUT} NAME)
separate_arguments(option_list UNIX_COMMAND "${OPTIONS}")
execute_process(COMMAND ${CLI} ${option_list} ${name} WORKING_DIRECTORY ${folder}
                OUTPUT_VARIABLE printed ERROR_VARIABLE messages RESULT_VARIABLE status)
file(READ ${EXPECTED} expected)
if(NOT printed STREQUAL expected)
  file(WRITE ${OUTPUT_FILE} "${printed}")
  execute_process(COMMAND diff -u ${EXPECTED} ${OUTPUT_FILE})
  message(FATAL_ERROR "${INPUT}: the processed text differs from ${EXPECTED} (status ${status})\n${messages}")
endif()
# The messages are part of the contract too, where the document expects some.
if(EXISTS ${EXPECTED_ERRORS})
  file(READ ${EXPECTED_ERRORS} expected_messages)
  if(NOT messages STREQUAL expected_messages)
    message(FATAL_ERROR "${INPUT}: standard error differs from ${EXPECTED_ERRORS}:\n${messages}")
  endif()
endif()
