#pragma once

#include "core/Records.h"

namespace corvane {
/// Takes the records of a scan in the order in which the scenery gives them.
class DatabaseSink {
public:
    virtual ~DatabaseSink() = default;

    virtual void AddAirport(const AirportRecord& record) = 0;
    virtual void AddVor(const NavaidRecord& record) = 0;
    virtual void AddNdb(const NavaidRecord& record) = 0;
    virtual void AddAirspace(const AirspaceRecord& record) = 0;

protected:
    DatabaseSink() = default;
    DatabaseSink(const DatabaseSink&) = default;
    DatabaseSink(DatabaseSink&&) = default;
    DatabaseSink& operator=(const DatabaseSink&) = default;
    DatabaseSink& operator=(DatabaseSink&&) = default;
};
} // namespace corvane
