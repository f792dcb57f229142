#include "toolchain/windows/DisplayText.h"

#include <algorithm>

#include "base/Text.h"

namespace toolchain {

QString DisplayLine(const std::string& text, std::size_t maxBytes) {
    std::string line = base::DisplayUtf8(base::Left(text, maxBytes));
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    std::replace_if(line.begin(), line.end(), isControl, ' ');
    return QString::fromStdString(line);
}

}  // namespace toolchain
