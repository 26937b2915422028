// SPDX-License-Identifier: MIT
#pragma once

#include "model/TAdmMDBFile.h"
#include "samples/DatabaseWriter.h"
#include "samples/DemoDatabase.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace vellumo::test {

// The sample database, written to a folder of its own and opened. Needs vellumo_samples.
class DemoFile {
public:
    DemoFile()
    {
        const auto result = samples::writeDatabase(samples::demoDatabase(), m_folder.path("demo.mdb"));
        EXPECT_TRUE(result.ok()) << result.error;
        m_file.setFullPath(m_folder.path("demo.mdb"));
        EXPECT_TRUE(m_file.open());
    }
    [[nodiscard]] const TAdmMDBFile& file() const { return m_file; }

private:
    TempFolder m_folder;
    TAdmMDBFile m_file;
};

} // namespace vellumo::test
