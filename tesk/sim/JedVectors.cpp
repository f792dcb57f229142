#include "sim/JedVectors.h"

#include "base/Text.h"
#include "model/Jedec.h"

namespace sim {
namespace {

constexpr std::string_view lineEnd = "\r\n";

bool IsVectorField(std::string_view field) {
    const auto text = base::Trim(field);
    return base::StartsWith(text, "QV") || base::StartsWith(text, "V");
}

// What stands between STX and ETX without its vectors: the first field is free text up to its "*".
std::string WithoutVectors(std::string_view body) {
    std::string kept;
    bool first = true;
    for (std::size_t at = 0; at < body.size();) {
        const auto star = body.find('*', at);
        if (star == body.npos) break;
        const auto field = body.substr(at, star - at);
        if (first || !IsVectorField(field)) (kept += field) += '*';
        first = false;
        at = star + 1;
    }
    return kept;
}

}  // namespace

JedVectors::JedVectors(const AbsDesign& design, const SiHead& head)
    : unused_(static_cast<std::size_t>(design.PinCount), 'N') {
    const auto place = [&](std::size_t net) { return static_cast<std::size_t>(design.Nets[net].Pin) - 1; };
    for (std::size_t net = 0; net < design.Nets.size(); ++net)
        if (place(net) < unused_.size()) unused_[place(net)] = 'X';
    for (const std::size_t net : head.Columns) places_.push_back(place(net));
}

void JedVectors::Add(const VectorRecord& record) {
    more_ = count_ == Most;
    if (more_) return;
    fields_ += lineEnd;
    fields_ += "V" + model::VectorNumber(++count_) + " ";
    const std::size_t start = fields_.size();
    fields_ += unused_;
    for (std::size_t i = 0; i < places_.size(); ++i)
        if (places_[i] < unused_.size()) fields_[start + places_[i]] = record.Found[i];
    fields_ += '*';
}

std::string JedVectors::AppendTo(std::string_view jedec, MessageLog& log) const {
    const auto start = jedec.find(model::StartOfText);
    const auto end = start == jedec.npos ? start : jedec.find(model::EndOfText, start);
    if (end == jedec.npos) {
        log.Add("0401vs", 0);
        return {};
    }
    if (more_) log.Add("0403vs", 0, std::to_string(Most));
    std::string text(1, model::StartOfText);
    text += WithoutVectors(jedec.substr(start + 1, end - start - 1));
    text += lineEnd;
    text += "QV" + std::to_string(count_) + "*" + fields_;
    text += lineEnd;
    text += model::EndOfText;
    return std::string(jedec.substr(0, start)) + model::Transmission(std::move(text));
}

}  // namespace sim
