# The database engine: everything is tried on real files.
mlv_test(engine_test LABEL logic COST 6
    SOURCES
        db/data_control_test.cpp
        sqlite/engine/engine_bulk_insert_test.cpp
        sqlite/engine/engine_catalogue_test.cpp
        sqlite/engine/engine_defaults_test.cpp
        sqlite/engine/engine_errors_test.cpp
        sqlite/engine/engine_files_test.cpp
        sqlite/engine/engine_fixture.cpp sqlite/engine/engine_fixture.h
        sqlite/engine/engine_hostile_test.cpp
        sqlite/engine/engine_joins_test.cpp
        sqlite/engine/engine_large_set_test.cpp
        sqlite/engine/engine_links_test.cpp
        sqlite/engine/engine_operations_test.cpp
        sqlite/engine/engine_recordset_test.cpp
        sqlite/engine/engine_statements_test.cpp
        sqlite/engine/engine_types_test.cpp
    LINKS mlv_platform_sqlite SQLite::SQLite3)

# Whole files: copied, checked and restored while others use them.
mlv_test(database_care_test LABEL logic
    SOURCES
        sqlite/engine/database_care_test.cpp
        sqlite/engine/engine_fixture.cpp sqlite/engine/engine_fixture.h
    LINKS mlv_platform_sqlite SQLite::SQLite3)

# The index in memory against SQLite alone.
mlv_test(column_index_test LABEL logic COST 18
    SOURCES
        sqlite/index/column_index_changes_test.cpp
        sqlite/index/column_index_fixture.h
        sqlite/index/column_index_guard_test.cpp
        sqlite/index/column_index_snapshot_test.cpp
        sqlite/index/index_column_builder_test.cpp
        sqlite/index/index_texts_test.cpp
        sqlite/engine/engine_fixture.cpp sqlite/engine/engine_fixture.h
    LINKS mlv_platform_sqlite mlv_sqlite_dialect SQLite::SQLite3)

# What the machine that tests does not use by itself. Longer: tools/prove_search.sh
foreach(width plain sse2)
    add_test(NAME column_index_test_${width}
        COMMAND column_index_test --gtest_filter=ColumnIndexGuard.*:IndexTextsProof.*)
    set_tests_properties(column_index_test_${width} PROPERTIES LABELS logic TIMEOUT 300 COST 12
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;SDL_AUDIODRIVER=dummy;MLV_VECTOR=${width}")
endforeach()

# The engine on a failing system and on damaged files. Longer: tools/prove_engine.sh
mlv_test(engine_fault_test LABEL logic
    SOURCES
        sqlite/engine/engine_changes.cpp sqlite/engine/engine_changes.h
        sqlite/engine/engine_damage_test.cpp
        sqlite/engine/engine_fault_test.cpp
        sqlite/engine/engine_fixture.cpp sqlite/engine/engine_fixture.h
    LINKS mlv_platform_sqlite mlv_test_faults)

# Starts itself as further processes.
mlv_test(engine_process_test LABEL process
    SOURCES
        sqlite/engine/engine_fixture.cpp sqlite/engine/engine_fixture.h
        sqlite/engine/engine_process_test.cpp
        sqlite/engine/mixed_changes.cpp sqlite/engine/mixed_changes.h
    LINKS mlv_platform_sqlite mlv_test_faults)
