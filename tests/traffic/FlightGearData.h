#pragma once

#include "core/Bytes.h"
#include "traffic/flightgear/Packet.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace corvane::test {
/// A packet of a capture and the simulator's own figures of the same frame, by column.
struct CapturedPacket {
    Bytes Datagram;
    std::map<std::string, std::string> Truth;

    [[nodiscard]] double Figure(const std::string& column) const { return std::stod(Truth.at(column)); }
};

inline Bytes FromHex(const std::string& hex)
{
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(hex.substr(i, 2), nullptr, 16)));
    return bytes;
}

inline std::vector<CapturedPacket> ReadCapture(const std::string& name)
{
    std::ifstream file(std::string(CORVANE_TRAFFIC_DATA) + "/flightgear-" + name + ".txt");
    std::vector<std::string> columns;
    std::vector<CapturedPacket> packets;
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string first;
        words >> first;
        if (first == "#columns") {
            for (std::string column; words >> column;)
                columns.push_back(column);
            continue;
        }
        std::string kind;
        words >> kind >> std::ws;
        if (kind == "P") {
            words >> first;
            packets.push_back({FromHex(first), {}});
        } else if (kind == "T") {
            for (const std::string& column : columns)
                std::getline(words, packets.back().Truth[column], '\t');
        }
    }
    EXPECT_FALSE(packets.empty()) << name;
    return packets;
}

/// A pilot's packet, to be changed.
inline flightgear::OwnPosition SamplePilot(std::string_view callsign, double timeS)
{
    return {.Callsign = callsign,
            .Model = "Aircraft/c172p/Models/c172p.xml",
            .RangeNm = 100,
            .TimeS = timeS,
            .IntervalS = 0.1,
            .Position = {47.45, -122.31},
            .AltitudeFt = 3000,
            .TrueHeading = 163,
            .GroundSpeedKt = 110,
            .Chat = {},
            .Squawk = 21};
}
} // namespace corvane::test
