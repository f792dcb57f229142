#include "dis/VectorText.h"

#include "base/Text.h"

namespace dis {
namespace {

// A column of the vectors.
struct Column {
    int Pin = 0;
    bool IsInput = false;
    bool CanBeOff = false;
    bool IsRegister = false;
};

// What the simulator takes for a condition; 'N' and not `said` if it has nothing like it.
char ValueFor(char condition, const Column& column, bool isPreload, char open, bool& said) {
    switch (condition) {
        case 'U':
        case 'D':
            return ValueFor(condition == 'U' ? '1' : '0', column, isPreload, open, said);
        case 'F':
            return 'N';
        case 'X':
            return column.IsInput && open != '\0' ? open : 'X';
        case '0':
        case '1':
            said = column.IsInput || column.CanBeOff || (isPreload && column.IsRegister);
            break;
        case 'C':
        case 'K':
            said = column.IsInput;
            break;
        case 'L':
        case 'H':
            said = !column.IsInput;
            break;
        default:
            said = condition == 'Z' || condition == 'N' || condition == 'P';
    }
    return said ? condition : 'N';
}

std::vector<Column> ColumnsOf(const Programmed& chip, const Naming& naming) {
    std::vector<Column> columns;
    for (const auto& [pin, name] : naming.Pins()) {
        const auto cell = chip.LiveAt(static_cast<std::size_t>(pin));
        columns.push_back({pin, !cell, cell && chip.At(*cell).Enable.When != proof::Always(),
                           cell && chip.At(*cell).Register != proof::RegisterKind::None});
    }
    return columns;
}

// The place of each pin in a vector.
std::vector<std::size_t> PlacesOf(const proof::JedecFile& file, const std::vector<Column>& columns) {
    std::vector<std::size_t> places;
    for (const auto& column : columns) {
        const auto pin = static_cast<std::size_t>(column.Pin);
        std::size_t place = file.PinOrder.empty() ? pin - 1 : std::string::npos;
        for (std::size_t i = 0; i < file.PinOrder.size(); ++i)
            if (file.PinOrder[i] == pin) place = i;
        places.push_back(place);
    }
    return places;
}

std::string OrderOf(const Naming& naming) {
    std::string text = "ORDER: ";
    std::size_t inLine = 0;
    for (const auto& [pin, record] : naming.Pins()) {
        if (inLine == 8) text += ",\r\n       ";
        if (inLine != 0 && inLine != 8) text += ", ";
        inLine = inLine == 8 ? 1 : inLine + 1;
        text += (record.ActiveLow ? "!" : "") + record.Name;
    }
    return text + " ;\r\n";
}

}  // namespace

std::string VectorText(std::string_view header, const proof::JedecFile& file, const Programmed& chip,
                       const Naming& naming, std::vector<Message>& messages) {
    if (file.Vectors.empty() || naming.Pins().empty()) return {};
    const auto columns = ColumnsOf(chip, naming);
    const auto places = PlacesOf(file, columns);
    std::string text = std::string(header) + OrderOf(naming) + "\r\nVECTORS:\r\n";
    std::size_t leftOut = 0;
    for (const auto& vector : file.Vectors) {
        const bool isPreload = vector.Conditions.find('P') != std::string::npos;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const char condition = places[i] < vector.Conditions.size() ? vector.Conditions[places[i]] : 'N';
            bool said = true;
            text += ValueFor(condition, columns[i], isPreload, file.OpenCondition, said);
            leftOut += said ? 0 : 1;
        }
        text += "\r\n";
    }
    if (leftOut > 0)
        messages.push_back(
            model::MakeMessage(MessageCode("7607tc").Entry(), {}, std::to_string(leftOut) + ", now N"));
    return text;
}

}  // namespace dis
