mlv_test(text_compare_test LABEL logic
    SOURCES db/text_compare_test.cpp
    LINKS mlv_platform)

mlv_test(sqlite_dialect_test LABEL logic
    SOURCES
        sqlite/dialect_errors_test.cpp
        sqlite/dialect_expressions_test.cpp
        sqlite/dialect_fuzz_test.cpp
        sqlite/dialect_library.cpp sqlite/dialect_library.h
        sqlite/dialect_queries_test.cpp
        sqlite/dialect_statements_test.cpp
    LINKS mlv_sqlite_dialect)
