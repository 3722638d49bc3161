# The program's words stand in catalogs, one per subsystem: src/<folder>/<name>.catalog (the format:
# tools/textcat/textcat.h). vesk-textcat turns each into the texts header <folder>/<name>.h under
# VESK_TEXTS_DIR, a source of the layer library vesk_<folder>, so it is made before anything of that
# layer or above it is compiled. A header that would not change is left alone.
#
# vesk_text_catalogs(): call it in src/, after the layers.
function(vesk_text_catalogs)
    file(GLOB catalogs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*/*.catalog)
    foreach(catalog ${catalogs})
        file(RELATIVE_PATH rel ${CMAKE_CURRENT_SOURCE_DIR} ${catalog})
        get_filename_component(folder ${rel} DIRECTORY)
        get_filename_component(name ${rel} NAME_WE)
        if(NOT TARGET vesk_${folder})
            message(FATAL_ERROR "${rel}: no layer library vesk_${folder} to hold its texts header")
        endif()
        set(header ${VESK_TEXTS_DIR}/${folder}/${name}.h)
        add_custom_command(OUTPUT ${header}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${VESK_TEXTS_DIR}/${folder}
            COMMAND vesk-textcat ${catalog} ${header}
            DEPENDS vesk-textcat ${catalog}
            COMMENT "Texts header ${folder}/${name}.h from its catalog"
            VERBATIM)
        target_sources(vesk_${folder} PRIVATE ${header})
    endforeach()
endfunction()
