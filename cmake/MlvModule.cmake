# mlv_module(NAME SOURCES ... LINKS ... [PRIVATE_LINKS ...] [WIDGETS])
#
# A static library of one folder. WIDGETS says that it may use Qt Widgets; it then shares the
# precompiled header of the widget modules, otherwise the one of the logic modules.
function(mlv_module name)
    cmake_parse_arguments(ARG "WIDGETS" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC mlv_flags Qt6::Core ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})
    if(ARG_WIDGETS)
        target_link_libraries(${name} PUBLIC Qt6::Gui Qt6::Widgets)
        target_precompile_headers(${name} REUSE_FROM mlv_pch_widgets)
    else()
        target_precompile_headers(${name} REUSE_FROM mlv_pch_core)
    endif()
endfunction()

# mlv_test(NAME LABEL logic|window|process|x11 SOURCES ... LINKS ... [TIMEOUT seconds] [COST seconds])
#
# One test program. All test programs share one main and one precompiled header. COST is about how
# long it takes: the long ones begin first, so that none of them runs alone at the end.
function(mlv_test name)
    cmake_parse_arguments(ARG "" "LABEL;TIMEOUT;COST" "SOURCES;LINKS" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 300) # for one that hangs, however busy the machine is
    endif()
    add_library(${name}_objects OBJECT ${ARG_SOURCES})
    target_link_libraries(${name}_objects PUBLIC mlv_test_support ${ARG_LINKS})
    target_precompile_headers(${name}_objects REUSE_FROM mlv_pch_tests)
    add_executable(${name})
    set_target_properties(${name} PROPERTIES AUTOMOC OFF RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    target_link_libraries(${name} PRIVATE ${name}_objects mlv_test_main)
    target_sources(${name} PRIVATE $<TARGET_OBJECTS:${name}_objects> $<TARGET_OBJECTS:mlv_test_main>)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES LABELS ${ARG_LABEL} TIMEOUT ${ARG_TIMEOUT})
    if(ARG_COST)
        set_tests_properties(${name} PROPERTIES COST ${ARG_COST})
    endif()
    if(ARG_LABEL STREQUAL "x11")
        set_tests_properties(${name} PROPERTIES RESOURCE_LOCK display)
    else()
        set_tests_properties(${name} PROPERTIES
            ENVIRONMENT "QT_QPA_PLATFORM=offscreen;SDL_AUDIODRIVER=dummy")
    endif()
endfunction()
