#include "fit/Jedec.h"
#include "front/Outputs.h"

namespace front {

std::string JedecText(const Design& design, const Options& options, const Fitted& fitted) {
    fit::JedecNotes notes;
    notes.Secure = options.Secure;
    for (std::size_t i = 0; i < headerWords.size(); ++i)
        if (design.Head.Given[i]) notes.Header.emplace_back(headerWords[i].Name, design.Head.Texts[i]);
    return fit::WriteJedec(fitted.Device, fitted.Result, notes);
}

}  // namespace front
