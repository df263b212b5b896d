#include "simulator/fault.h"

#include <algorithm>
#include <iterator>

namespace {

struct NamedFault
{
    std::string_view name;
    Fault (*make)();
};

constexpr NamedFault namedFaults[] = {
    {"silence", Fault::silence},
    {"late", [] { return Fault::lateAnswer(); }},
    {"slow", [] { return Fault::slowBytes(); }},
    {"noise", Fault::noise},
    {"checksum", Fault::wrongChecksum},
    {"cut", Fault::cutOff},
    {"zero", Fault::zeroByte},
    {"status", [] { return Fault::errorStatus(); }},
    {"endless", Fault::endlessStream},
    {"hangup", Fault::hangUp},
};

}  // namespace

std::optional<Fault> Fault::named(std::string_view name)
{
    const auto *row = std::ranges::find(namedFaults, name, &NamedFault::name);
    return row != std::end(namedFaults) ? std::optional(row->make()) : std::nullopt;
}

std::string Fault::names()
{
    std::string list;
    for (const NamedFault &row : namedFaults)
        list.append(list.empty() ? "" : ", ").append(row.name);
    return list;
}

bool Fault::carriesOut() const
{
    return kind != Kind::Silence && kind != Kind::ErrorStatus && kind != Kind::EndlessStream;
}
