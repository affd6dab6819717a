#pragma once

#include "cli/Json.h"
#include "core/Rounding.h"
#include "core/Text.h"

#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace corvane {
/// Takes members out of a JSON object into fields, remembering the first one that does not fit.
class JsonMembers {
public:
    explicit JsonMembers(const Json& object) : m_object(object) {}

    [[nodiscard]] const std::string& Why() const { return m_why; }

    void Take(const char* name, std::string& field)
    {
        if (const Json* member = Find(name)) {
            if (member->is_string())
                field = Utf8ToWindows1252(member->get_ref<const std::string&>());
            else
                Complain(name, "is not a text");
        }
    }

    void Take(const char* name, double& field)
    {
        if (const Json* member = Find(name)) {
            if (member->is_number())
                field = member->get<double>();
            else
                Complain(name, "is not a number");
        }
    }

    template <std::integral T> void Take(const char* name, T& field)
    {
        double value = field;
        Take(name, value);
        const std::optional<std::int32_t> whole = RoundChecked<std::int32_t>(value);
        if (whole && *whole >= std::numeric_limits<T>::min() && *whole <= std::numeric_limits<T>::max())
            field = static_cast<T>(*whole);
        else
            Complain(name, "does not fit its field");
    }

private:
    const Json* Find(const char* name) const
    {
        const auto found = m_object.find(name);
        return found == m_object.end() ? nullptr : &*found;
    }

    void Complain(const char* name, const char* why)
    {
        if (m_why.empty())
            m_why = std::string(name) + " " + why;
    }

    const Json& m_object;
    std::string m_why;
};
} // namespace corvane
