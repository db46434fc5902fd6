// A database of one substance that lacks some of its values, for what a complete record cannot show.
#pragma once
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>
#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>

#include "base/files.h"
#include "substance/record.h"
#include "support/starter.h"

namespace quom::test {

// The substance of the starter database with these cells emptied, as a file of its own that goes with the
// object.
class ReducedDatabase {
 public:
    ReducedDatabase(std::string_view cas, std::initializer_list<int> emptied)
        : path_(::testing::TempDir() + "reduced_" + std::to_string(::getpid()) + ".q07") {
        const RecordLayout& layout = *record_layout(7);
        const DatabaseFile file = starter_database();
        std::string header(layout.length, '\0'), record(layout.length, '\0');
        const auto index = static_cast<std::size_t>(FindCAS(file, cas));
        EXPECT_NE(index, 0u) << cas;
        EXPECT_TRUE(file.handle.read_at(0, header) && file.handle.read_at(index * layout.length, record));
        set_record_i16(header, layout.SystemNo, 1);
        for (const int cell : emptied) set_record_cell(record, layout, cell, 0.0f);
        EXPECT_EQ(write_file_atomic(path_, header + record), "");
    }
    ReducedDatabase(const ReducedDatabase&) = delete;
    ReducedDatabase& operator=(const ReducedDatabase&) = delete;
    ~ReducedDatabase() { std::filesystem::remove(path_); }

    const std::string& path() const { return path_; }

 private:
    std::string path_;
};

}  // namespace quom::test
