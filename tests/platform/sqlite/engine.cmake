# The database engine: everything is tried on real files.
mlv_test(engine_test LABEL logic
    SOURCES
        db/data_control_test.cpp
        sqlite/engine_catalogue_test.cpp
        sqlite/engine_defaults_test.cpp
        sqlite/engine_errors_test.cpp
        sqlite/engine_files_test.cpp
        sqlite/engine_fixture.cpp sqlite/engine_fixture.h
        sqlite/engine_hostile_test.cpp
        sqlite/engine_joins_test.cpp
        sqlite/engine_large_set_test.cpp
        sqlite/engine_links_test.cpp
        sqlite/engine_operations_test.cpp
        sqlite/engine_recordset_test.cpp
        sqlite/engine_statements_test.cpp
        sqlite/engine_types_test.cpp
    LINKS mlv_platform_sqlite SQLite::SQLite3)

# The index in memory against SQLite alone.
mlv_test(column_index_test LABEL logic
    SOURCES
        sqlite/column_index_changes_test.cpp
        sqlite/column_index_fixture.h
        sqlite/column_index_guard_test.cpp
        sqlite/column_index_snapshot_test.cpp
        sqlite/engine_fixture.cpp sqlite/engine_fixture.h
    LINKS mlv_platform_sqlite mlv_sqlite_dialect SQLite::SQLite3)

# The engine on a failing system and on damaged files. Longer: tools/prove_engine.sh
mlv_test(engine_fault_test LABEL logic
    SOURCES
        sqlite/engine_changes.cpp sqlite/engine_changes.h
        sqlite/engine_damage_test.cpp
        sqlite/engine_fault_test.cpp
        sqlite/engine_fixture.cpp sqlite/engine_fixture.h
    LINKS mlv_platform_sqlite mlv_test_faults)

# Starts itself as further processes.
mlv_test(engine_process_test LABEL process
    SOURCES
        sqlite/engine_fixture.cpp sqlite/engine_fixture.h
        sqlite/engine_process_test.cpp
        sqlite/mixed_changes.cpp sqlite/mixed_changes.h
    LINKS mlv_platform_sqlite mlv_test_faults)
