#include "world/Credits.h"

namespace corvane {
std::string CreditsText(std::span<const SourceCredit> sources)
{
    std::string text =
        "The map in this folder was made of the files below. Their licences hold for what was made of them.\n";
    for (const SourceCredit& source : sources) {
        text.append("\n").append(source.File).append("\n");
        for (const std::string& remark : source.Remarks)
            text.append("  ").append(remark).append("\n");
    }
    return text;
}
} // namespace corvane
