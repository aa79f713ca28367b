#include "support/faulty_memory.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace melovane::test {

namespace {

// SQLite's memory is one for the whole process, and so are these.
sqlite3_mem_methods realMemory;
int requestsLeft = 0; ///< until the fault; 0 when none is armed
int requests = 0;
bool isLasting = false;
bool wasRefused = false;

bool refuses()
{
    ++requests;
    if (requestsLeft == 0 || --requestsLeft > 0) {
        return false;
    }
    requestsLeft = isLasting ? 1 : 0;
    wasRefused = true;
    return true;
}

void* faultyMalloc(int size)
{
    return refuses() ? nullptr : realMemory.xMalloc(size);
}

void* faultyRealloc(void* memory, int size)
{
    return refuses() ? nullptr : realMemory.xRealloc(memory, size);
}

} // namespace

FaultyMemory::FaultyMemory()
{
    sqlite3_shutdown();
    EXPECT_EQ(sqlite3_config(SQLITE_CONFIG_GETMALLOC, &realMemory), SQLITE_OK);
    sqlite3_mem_methods faulty = realMemory;
    faulty.xMalloc = faultyMalloc;
    faulty.xRealloc = faultyRealloc;
    EXPECT_EQ(sqlite3_config(SQLITE_CONFIG_MALLOC, &faulty), SQLITE_OK);
    // Small pieces would else come from a block that is asked for once.
    EXPECT_EQ(sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0), SQLITE_OK);
    EXPECT_EQ(sqlite3_initialize(), SQLITE_OK);
}

FaultyMemory::~FaultyMemory()
{
    constexpr int kUsualSize = 1200;
    constexpr int kUsualCount = 40;
    disarm();
    sqlite3_shutdown();
    EXPECT_EQ(sqlite3_config(SQLITE_CONFIG_MALLOC, &realMemory), SQLITE_OK);
    EXPECT_EQ(sqlite3_config(SQLITE_CONFIG_LOOKASIDE, kUsualSize, kUsualCount), SQLITE_OK);
    EXPECT_EQ(sqlite3_initialize(), SQLITE_OK);
}

void FaultyMemory::arm(int nth, bool lasting)
{
    requests = 0;
    requestsLeft = nth;
    isLasting = lasting;
    wasRefused = false;
}

int FaultyMemory::count() const
{
    return requests;
}

bool FaultyMemory::disarm()
{
    requestsLeft = 0;
    return wasRefused;
}

} // namespace melovane::test
