#pragma once

#include <functional>
#include <string>

namespace corvane {
/// How far the writing of a world has come: the step at hand, and files done of all.
struct WorldProgress {
    std::string Step;
    int Done = 0;
    int Total = 0;
};
using WorldProgressCallback = std::function<void(const WorldProgress&)>;
} // namespace corvane
