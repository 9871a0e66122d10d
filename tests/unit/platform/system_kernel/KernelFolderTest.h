// A fresh temporary folder that is the current directory for one test, with helpers to put
// files in it and read them back byte for byte. Kernel state is reset on both ends.
#pragma once

#include "platform/system/QzKernelHost.h"

#include <gtest/gtest.h>

#include <string>

class KernelFolderTest : public ::testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    static void WriteBytes(const std::string& path, const std::string& bytes);
    static std::string ReadBytes(const std::string& path);
    static bool FileExists(const std::string& path);
    static void MakeFolder(const std::string& path);
    const std::string& Folder() const { return m_folder; }

private:
    std::string m_folder;
    std::string m_previous;
};
