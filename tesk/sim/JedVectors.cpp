#include "sim/JedVectors.h"

#include "model/Jedec.h"
#include "proof/JedecFile.h"

namespace sim {
namespace {

constexpr std::string_view lineEnd = "\r\n";

bool IsVectorField(std::string_view field) { return field.starts_with("QV") || field.starts_with("V"); }

std::string WithoutVectors(std::string_view jedec, const proof::JedecFrame& frame) {
    std::string kept;
    std::size_t at = frame.Start;
    const auto keepTo = [&](std::size_t end, bool keeps) {
        if (keeps) kept += jedec.substr(at, end - at);
        at = end;
    };
    bool keeps = true;
    for (const proof::JedecField& field : frame.Fields) {
        keepTo(field.At, keeps);
        keeps = !IsVectorField(field.Text);
    }
    keepTo(frame.End - frame.Rest.size(), keeps);
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
    const proof::JedecFrame frame = proof::FrameOf(jedec);
    if (!frame.HasStart || !frame.HasEnd) {
        log.Add("0401vs", 0);
        return {};
    }
    if (more_) log.Add("0403vs", 0, std::to_string(Most));
    std::string text = model::StartOfText + WithoutVectors(jedec, frame);
    text += lineEnd;
    text += "QV" + std::to_string(count_) + "*" + fields_;
    text += lineEnd;
    text += model::EndOfText;
    return std::string(jedec.substr(0, frame.Start - 1)) + model::Transmission(std::move(text));
}

}  // namespace sim
