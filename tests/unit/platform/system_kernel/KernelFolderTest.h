// A test in a fresh temporary data folder (the current directory), with the hosted kernel
// reset on both ends so that no open file, mapping, module or cached profile crosses tests.
#pragma once

#include "platform/system/kernel/QzKernelHost.h"
#include "support/BothStorages.h"
#include "support/TempDataDir.h"

#include <gtest/gtest.h>

class KernelFolderTest : public ::testing::Test
{
protected:
    void SetUp() override { QzPlatform::ResetKernelForTesting(); }
    void TearDown() override { QzPlatform::ResetKernelForTesting(); }

    QzTest::TempDataDir m_dir;
};

// The same, once with files on disk and once with the platform's memory files in their place:
// every file function answers the same from both.
class KernelFileTest : public ::testing::TestWithParam<QzTest::Storage>
{
protected:
    void SetUp() override { QzPlatform::ResetKernelForTesting(); }
    void TearDown() override { QzPlatform::ResetKernelForTesting(); }

    QzTest::TempDataDir m_dir{GetParam()};
};
