# The properties as libraries, for the tests here and for the fuzzers. Included by the root.
set(corpus_folder ${CMAKE_CURRENT_LIST_DIR})

add_library(meshvane_seed_corpus STATIC
    ${corpus_folder}/SeedCorpus.cpp
    ${corpus_folder}/SeedCorpus.h)
target_link_libraries(meshvane_seed_corpus PUBLIC meshvane_test_support)
meshvane_own_code(meshvane_seed_corpus)

add_library(meshvane_run_properties STATIC
    ${corpus_folder}/RunOptions.cpp
    ${corpus_folder}/RunOptions.h
    ${corpus_folder}/RunProperties.cpp
    ${corpus_folder}/RunProperties.h)
target_link_libraries(meshvane_run_properties PUBLIC meshvane_transform_comparison meshvane_seed_corpus)
# Replaces the function that ends the process in every program that links this.
target_sources(meshvane_run_properties INTERFACE ${corpus_folder}/FatalSeam.cpp)
meshvane_own_code(meshvane_run_properties)

if(TARGET meshvane_cli_core)
    add_library(meshvane_run_log_property STATIC
        ${corpus_folder}/RunLogProperty.cpp
        ${corpus_folder}/RunLogProperty.h)
    target_link_libraries(meshvane_run_log_property PUBLIC meshvane_cli_core meshvane_seed_corpus)
    meshvane_own_code(meshvane_run_log_property)
endif()

add_library(meshvane_field_property STATIC
    ${corpus_folder}/FieldProperty.cpp
    ${corpus_folder}/FieldProperty.h
    ${corpus_folder}/PlainField.cpp
    ${corpus_folder}/PlainField.h)
target_link_libraries(meshvane_field_property PUBLIC meshvane_widgets meshvane_seed_corpus)
meshvane_own_code(meshvane_field_property)
