#pragma once

#include "app/AppState.h"
#include "core/MessageBoxes.h"
#include "tests/core/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// Writes message boxes down as "icon: text" and answers questions as told.
class ScriptedBoxes final : public MessageBoxes {
public:
    void Show(MessageIcon icon, std::string_view title, std::string_view text) override;
    bool Confirm(std::string_view title, std::string_view text) override;
    std::optional<std::string> AskText(std::string_view /*title*/, std::string_view /*prompt*/) override { return {}; }

    std::vector<std::string> Shown;
    bool Answer = false;
};

/// A state whose AppFolder is a fresh temporary folder.
class AppTest : public testing::Test {
protected:
    AppTest();

    void Write(const std::filesystem::path& name, std::string_view content = {}) const;
    /// The five data files, with settings of this version and an empty database.
    void WriteDataFiles() const;
    [[nodiscard]] bool Has(const std::filesystem::path& name) const;
    [[nodiscard]] std::size_t FileCount() const;

    AppState State;
    ScriptedBoxes Boxes;

private:
    TemporaryFolder m_folder;
};
} // namespace corvane
