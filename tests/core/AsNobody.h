#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace corvane {
/// Runs work as somebody who has no rights of their own: permissions mean nothing to the superuser, as whom tests may
/// run. Anybody else has none of the rights that a test takes away anyway.
///
/// folder  made readable to everybody for it; may be empty
template <class Work> void AsNobody(const std::filesystem::path& folder, const Work& work)
{
    constexpr uid_t Nobody = 65534;
    if (!folder.empty())
        std::filesystem::permissions(folder, std::filesystem::perms::all);
    const bool superuser = ::geteuid() == 0;
    if (superuser) {
        ASSERT_EQ(::seteuid(Nobody), 0);
    }
    work();
    if (superuser) {
        ASSERT_EQ(::seteuid(0), 0);
    }
}
} // namespace corvane
