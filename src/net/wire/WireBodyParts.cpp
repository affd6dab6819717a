#include "net/wire/WireBodyParts.h"

#include "net/wire/WireText.h"

namespace corvane::directplay {
bool ReadOffsetText(const Body& body, std::uint32_t offset, std::uint32_t fixedEnd, std::u16string& text)
{
    if (offset == 0)
        return true;
    auto read = offset >= fixedEnd ? ReadWideTextAt(body.All, offset) : std::nullopt;
    if (!read)
        return false;
    text = std::move(*read);
    return true;
}

ManagementBody ReadManagementBody(Body& body)
{
    ManagementBody ids;
    ids.To = body.In.ReadU32();
    ids.Player = body.In.ReadU32();
    ids.Group = body.In.ReadU32();
    ids.CreateOffset = body.In.ReadU32();
    ids.PasswordOffset = body.In.ReadU32();
    return ids;
}

bool ReadCreated(const Body& body, const ManagementBody& ids, PackedPlayer& player)
{
    constexpr std::uint32_t FixedEnd = 28;
    if (ids.CreateOffset < FixedEnd || ids.CreateOffset > body.All.size())
        return false;
    ByteReader in(body.All.subspan(ids.CreateOffset));
    auto read = ReadPackedPlayer(in);
    if (!read || read->Id != ids.Player)
        return false;
    player = std::move(*read);
    return true;
}
} // namespace corvane::directplay
