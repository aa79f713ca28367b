mlv_test(sqlite_dialect_test LABEL logic
    SOURCES
        sqlite/dialect_library.cpp sqlite/dialect_library.h
        sqlite/dialect_statements_test.cpp
    LINKS mlv_sqlite_dialect)
