# Puts the delivered settings file beside the programs unless the user's copy is newer, makes the
# empty work database when it is missing, and copies the demonstration study into the work folder
# when it has no copy yet. Run at build time by the target vesk_work_files.
if(NOT EXISTS ${SETTINGS} OR ${DELIVERED} IS_NEWER_THAN ${SETTINGS})
    file(COPY_FILE ${DELIVERED} ${SETTINGS})
    file(TOUCH_NOCREATE ${SETTINGS})
endif()
if(NOT EXISTS ${DATABASE})
    execute_process(COMMAND ${CLI} create-db ${DATABASE} RESULT_VARIABLE rc OUTPUT_QUIET)
    if(NOT rc EQUAL 0)
        message(FATAL_ERROR "could not create the work database ${DATABASE}")
    endif()
endif()
if(NOT EXISTS ${DEMO_COPY})
    file(COPY_FILE ${DEMO} ${DEMO_COPY})
endif()
