mlv_test(text_compare_test LABEL logic
    SOURCES db/text_compare_test.cpp
    LINKS mlv_platform)

mlv_test(sqlite_dialect_test LABEL logic COST 4
    SOURCES
        sqlite/dialect/dialect_errors_test.cpp
        sqlite/dialect/dialect_expressions_test.cpp
        sqlite/dialect/dialect_fuzz_test.cpp
        sqlite/dialect/dialect_library.cpp sqlite/dialect/dialect_library.h
        sqlite/dialect/dialect_queries_test.cpp
        sqlite/dialect/dialect_statements_test.cpp
    LINKS mlv_sqlite_dialect)

# The table of statements with their rows, on the tables and queries that ship.
add_library(mlv_test_statement_table STATIC
    sqlite/dialect/statement_table.cpp sqlite/dialect/statement_table.h)
target_link_libraries(mlv_test_statement_table PUBLIC mlv_test_support)
target_compile_definitions(mlv_test_statement_table
    PRIVATE MLV_STATEMENT_FOLDER="${CMAKE_CURRENT_SOURCE_DIR}/sqlite/dialect/statements"
        MLV_DIALECT_PAGE="${CMAKE_SOURCE_DIR}/docs/dialect.md")
target_precompile_headers(mlv_test_statement_table REUSE_FROM mlv_pch_tests)

mlv_test(dialect_table_test LABEL logic
    SOURCES sqlite/dialect/dialect_table_test.cpp
    LINKS mlv_test_statement_table mlv_test_suite)
