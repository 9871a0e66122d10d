// Runs a parameterised suite (TEST_P over QzTest::Storage) twice: files on disk, then the
// platform's memory files in their place; the tests are named .../Disk and .../Memory.
#pragma once

#include "support/TempDataDir.h"

#include <gtest/gtest.h>

#include <string>

namespace QzTest
{

inline std::string StorageName(const ::testing::TestParamInfo<Storage>& param)
{
    return param.param == Storage::Disk ? "Disk" : "Memory";
}

} // namespace QzTest

#ifdef _WIN32
// The memory files are the hosted system's: Windows runs the disk only.
#define QZ_ON_DISK_AND_IN_MEMORY(suite)                                                            \
    INSTANTIATE_TEST_SUITE_P(Files, suite, ::testing::Values(QzTest::Storage::Disk),               \
                             QzTest::StorageName)
#else
#define QZ_ON_DISK_AND_IN_MEMORY(suite)                                                            \
    INSTANTIATE_TEST_SUITE_P(Files, suite,                                                         \
                             ::testing::Values(QzTest::Storage::Disk, QzTest::Storage::Memory),    \
                             QzTest::StorageName)
#endif
