#include "net/Cells.h"

#include <array>

namespace net {
namespace {

// What the letters behind a kind's name stand for: a small letter is a port whose level follows as 'P' or
// 'N', 'v' the value that the reset before it gives, '0' or '1'.
struct Kind {
    std::string_view Name;
    std::string_view Letters;
    bool IsSynchronous = false;
};
constexpr std::array<Kind, 10> kinds{{{"DFF", "c"},
                                      {"DFF", "crv"},
                                      {"DFFE", "ce"},
                                      {"DFFE", "crve"},
                                      {"DFFSR", "csr"},
                                      {"DFFSRE", "csre"},
                                      {"SDFF", "crv", true},
                                      {"DLATCH", "e"},
                                      {"DLATCH", "erv"},
                                      {"DLATCHSR", "esr"}}};

std::optional<CellPort> PortOf(char letter, char level, bool isLatch) {
    if (level != 'P' && level != 'N') return std::nullopt;
    const bool inverted = level == 'N';
    switch (letter) {
        case 'c':
            return CellPort{'C', CellRole::Clock, inverted};
        case 'e':
            return CellPort{'E', isLatch ? CellRole::Clock : CellRole::Enable, inverted};
        case 's':
            return CellPort{'S', CellRole::Preset, inverted};
        default:
            return CellPort{'R', CellRole::Reset, inverted};
    }
}

std::optional<CellPorts> Match(const Kind& kind, std::string_view levels) {
    if (levels.size() != kind.Letters.size()) return std::nullopt;
    const bool isLatch = kind.Name.starts_with("DL");
    CellPorts cell{false, isLatch, {{'D', CellRole::Data}, {'Q', CellRole::Output}}};
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (kind.Letters[i] == 'v') {
            if (levels[i] != '0' && levels[i] != '1') return std::nullopt;
            const bool isOne = levels[i] == '1';
            cell.Ports.back().Role = kind.IsSynchronous ? (isOne ? CellRole::SyncPreset : CellRole::SyncReset)
                                                        : (isOne ? CellRole::Preset : CellRole::Reset);
            continue;
        }
        const auto port = PortOf(kind.Letters[i], levels[i], isLatch);
        if (!port) return std::nullopt;
        cell.Ports.push_back(*port);
    }
    return cell;
}

}  // namespace

const CellPort* CellPorts::Find(std::string_view name) const {
    for (const CellPort& port : Ports)
        if (name.size() == 1 && name[0] == port.Name) return &port;
    return nullptr;
}

std::optional<CellPorts> PortsOf(std::string_view cell) {
    if (cell == "$_TBUF_")
        return CellPorts{
            true, false, {{'A', CellRole::Data}, {'Y', CellRole::Output}, {'E', CellRole::Enable}}};
    if (!cell.starts_with("$_") || !cell.ends_with('_') || cell.size() < 5) return std::nullopt;
    cell = cell.substr(2, cell.size() - 3);
    const std::size_t cut = cell.find('_');
    if (cut == cell.npos) return std::nullopt;
    for (const Kind& kind : kinds) {
        if (kind.Name != cell.substr(0, cut)) continue;
        if (const auto ports = Match(kind, cell.substr(cut + 1))) return ports;
    }
    return std::nullopt;
}

Control& ControlOf(CellRole role, Register& reg) {
    switch (role) {
        case CellRole::Clock:
            return reg.Clock;
        case CellRole::Enable:
            return reg.Enable;
        case CellRole::Reset:
            return reg.Reset;
        case CellRole::Preset:
            return reg.Preset;
        case CellRole::SyncReset:
            return reg.SyncReset;
        default:
            return reg.SyncPreset;
    }
}

}  // namespace net
