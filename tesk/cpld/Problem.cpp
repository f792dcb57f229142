#include "cpld/Problem.h"

#include <algorithm>

namespace cpld {

Problem::Problem(const Plans& plans)
    : plans_(plans), unitOf_(plans.Names.size()), inputOf_(plans.Names.size()) {
    for (std::size_t i = 0; i < plans.All.size(); ++i) unitOf_[plans.All[i].Owner] = i;
    for (std::size_t i = 0; i < plans.Names.size(); ++i) {
        const auto& name = plans.Names[i];
        if (name.Driven || !(name.Read || name.Place)) continue;
        inputOf_[i] = Inputs.size();
        Inputs.push_back({i, name.Place});
    }
    for (const auto& plan : plans.All) AddUnit(plan);
}

// A register and its pin are one where the pin always carries it, and so are the two of a name without
// register.
Problem::Key Problem::KeyOf(const Literal& literal) const {
    const auto& name = plans_.Names[literal.Signal];
    if (!name.Driven) return {literal.Signal, true};
    if (name.Register && !literal.Pin) {
        const bool pin = name.Plain && name.Drives && name.State == literal.Signal;
        return {name.State, pin};
    }
    return {literal.Signal, name.Drives};
}

std::optional<std::size_t> Problem::SourceOf(const Literal& literal) const {
    if (literal.Signal >= firstFoldback) return std::nullopt;
    const auto found = sources_.find(KeyOf(literal));
    return found == sources_.end() ? std::nullopt : std::optional(found->second);
}

void Problem::AddSource(const Key& key) {
    const auto& name = plans_.Names[key.first];
    Source source;
    source.Name = key.first;
    source.Unit = unitOf_[key.first];
    source.Input = inputOf_[key.first];
    source.Pad = key.second;
    source.Feedback = name.Driven && (name.Plain || !key.second);
    sources_[key] = Sources.size();
    Sources.push_back(source);
}

void Problem::Read(const Literal& literal, Unit& unit) {
    if (literal.Signal >= firstFoldback) {
        const auto foldback = literal.Signal - firstFoldback;
        unit.Foldbacks.push_back(foldback);
        for (const auto& inner : plans_.Foldbacks[foldback]) Read(inner, unit);
        return;
    }
    const auto key = KeyOf(literal);
    if (!sources_.contains(key)) AddSource(key);
    unit.Reads.push_back(sources_.at(key));
}

namespace {

void SortUnique(std::vector<std::size_t>& numbers) {
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

}  // namespace

void Problem::AddUnit(const Plan& plan) {
    Unit unit;
    const auto& name = plans_.Names[plan.Owner];
    unit.Length = plan.Cells();
    unit.Pad = name.Drives;
    unit.Place = name.Place;
    const auto read = [&](const Product& product) {
        for (const auto& literal : product) Read(literal, unit);
    };
    for (const auto& term : plan.Terms) read(term);
    read(plan.Xor);
    for (const auto* control : {&plan.Clock, &plan.ClockEnable, &plan.Clear, &plan.Set, &plan.Enable})
        if (*control) read(**control);
    SortUnique(unit.Reads);
    SortUnique(unit.Foldbacks);
    const auto own = plan.OwnTerms();
    const auto places = own + (unit.Length - 1) * CellTerms;
    unit.Spare = places > plan.Terms.size() ? 1 : 0;
    Units.push_back(std::move(unit));
}

}  // namespace cpld
