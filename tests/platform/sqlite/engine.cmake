# The database engine: everything is tried on real files.
mlv_test(engine_test LABEL logic
    SOURCES
        sqlite/engine_catalogue_test.cpp
        sqlite/engine_fixture.cpp sqlite/engine_fixture.h
        sqlite/engine_links_test.cpp
        sqlite/engine_operations_test.cpp
        sqlite/engine_recordset_test.cpp
    LINKS mlv_platform_sqlite SQLite::SQLite3)

