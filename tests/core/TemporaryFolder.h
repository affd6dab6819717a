#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <unistd.h>

namespace corvane {
/// A fresh folder that disappears with the object.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
        std::string name = "corvane-" + std::to_string(::getpid()) + "-";
        for (const char* c = test == nullptr ? "" : test->name(); *c != '\0'; ++c)
            name += *c == '/' ? '.' : *c;
        for (int i = 0;; ++i) {
            m_path = std::filesystem::path(testing::TempDir()) / (name + "-" + std::to_string(i));
            if (std::filesystem::create_directory(m_path))
                break;
        }
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }

    /// Writes a file and the folders that lead to it; returns its path.
    template <class Content>
    std::filesystem::path Write(const std::filesystem::path& name, const Content& content) const
    {
        const std::filesystem::path path = m_path / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream file(path, std::ios::binary);
        file.write(reinterpret_cast<const char*>(std::data(content)), static_cast<std::streamsize>(std::size(content)));
        return path;
    }

private:
    std::filesystem::path m_path;
};
} // namespace corvane
