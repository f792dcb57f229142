#include "platform/qt/TextBox.h"

#include <algorithm>
#include <array>

#include "base/RunTimeError.h"
#include "base/ScopeExit.h"
#include "base/Text.h"
#include "platform/TextSearch.h"
#include "platform/qt/Guard.h"

namespace platform::qt {
namespace {

constexpr int errOutOfMemory = 7;
constexpr int errInvalidPropertyValue = 380;
constexpr std::size_t maxText = 1U << 30;  // offsets are 32-bit
constexpr std::int32_t scanBlock = 512;    // bytes looked at together by UpTo

}  // namespace

TextBox::TextBox(QWidget* parent)
    : QsciScintillaBase(parent),
      default_{CharFormat{}, "Courier New", 1000},
      styles_([this](StyleTable::Number number, const CharStyle& style) { DefineStyle(number, style); },
              [this] { return NumbersInUse(); }) {
    SetUpControl();
    SetUpColors();
    styles_.Reset(default_);
    DefineOwnStyles();
    On(this, &QsciScintillaBase::SCN_ZOOM, this, [this] {
        marginLines_ = -1;
        UpdateMargin();
    });
    On(this, &QsciScintillaBase::SCN_MODIFIED, this,
       [this](int position, int type, const char*, int length) { OnModification(position, type, length); });
    ListenToModifications();
    QAccessible::installActivationObserver(this);
}

TextBox::~TextBox() { QAccessible::removeActivationObserver(this); }

void TextBox::SetUpControl() {
    Sci(SCI_SETCODEPAGE, SC_CP_UTF8);
    Sci(SCI_SETEOLMODE, SC_EOL_CRLF);
    Sci(SCI_SETPASTECONVERTENDINGS, 1);
    Sci(SCI_SETWRAPMODE, SC_WRAP_NONE);
    Sci(SCI_CLEARALLCMDKEYS);
    Sci(SCI_USEPOPUP, 0);
    Sci(SCI_SETMULTIPLESELECTION, 0);
    Sci(SCI_SETRECTANGULARSELECTIONMODIFIER, 0);
    Sci(SCI_SETTABWIDTH, 8);
    Sci(SCI_SETTABINDENTS, 0);
    Sci(SCI_SETLAYOUTCACHE, SC_CACHE_PAGE);
    Sci(SCI_SETSCROLLWIDTH, 1);
    Sci(SCI_SETSCROLLWIDTHTRACKING, 1);
    Sci(SCI_SETMARGINLEFT, 0, 4);
    Sci(SCI_SETMARGINTYPEN, 0, SC_MARGIN_NUMBER);
    for (int margin = 1; margin < 5; ++margin) Sci(SCI_SETMARGINWIDTHN, margin, 0);
    setFrameShape(QFrame::NoFrame);
    setMinimumSize(0, 0);
}

// All colours are explicit: the desktop's theme may be dark.
void TextBox::SetUpColors() {
    constexpr long black = 0;
    constexpr long selection = 0xFFD8B0;
    for (int number = STYLE_DEFAULT; number <= STYLE_LASTPREDEFINED; ++number)
        Sci(SCI_STYLESETFORE, number, black);
    SetPaper(paper_);
    Sci(SCI_STYLESETFORE, STYLE_LINENUMBER, 0x686868);
    Sci(SCI_SETCARETFORE, black);
    Sci(SCI_SETSELBACK, 1, selection);
}

void TextBox::SetPaper(std::int32_t color) {
    paper_ = color;
    for (int number = 0; number <= STYLE_MAX; ++number) Sci(SCI_STYLESETBACK, number, color);
    Sci(SCI_STYLESETBACK, STYLE_LINENUMBER, 0xF4F4F4);
}

// Room for the line numbers, 999 at least.
void TextBox::UpdateMargin() {
    const long lines = Sci(SCI_GETLINECOUNT);
    long room = 999;
    while (room < lines) room = room * 10 + 9;
    if (room == marginLines_) return;
    marginLines_ = room;
    const std::string widest = std::to_string(room) + " ";
    Sci(SCI_SETMARGINWIDTHN, 0,
        SendScintilla(SCI_TEXTWIDTH, static_cast<uintptr_t>(STYLE_LINENUMBER), widest.c_str()));
}

long TextBox::Sci(unsigned message, long first, long second) const {
    return SendScintilla(message, static_cast<unsigned long>(first), second);
}

long TextBox::Sci(unsigned message, std::string_view bytes) const {
    const char* first = bytes.empty() ? "" : bytes.data();
    return SendScintilla(message, static_cast<uintptr_t>(bytes.size()), first);
}

std::string TextBox::Text() const { return std::string(TextView()); }

void TextBox::SetText(std::string_view text) {
    const std::string converted = base::ToCrLf(text);
    if (converted.size() > maxText) throw base::RunTimeError(errOutOfMemory, "Out of memory");
    {
        const base::ScopeExit loaded([this] {
            Sci(SCI_SETUNDOCOLLECTION, 1);
            loading_ = false;
        });
        loading_ = true;
        Sci(SCI_SETUNDOCOLLECTION, 0);
        Sci(SCI_CLEARALL);
        Sci(SCI_EMPTYUNDOBUFFER);
        removed_.clear();
        removedBytes_ = 0;
        pending_.reset();
        styles_.Reset(default_);
        Sci(SCI_SETSCROLLWIDTH, 1);
        Sci(SCI_SETXOFFSET, 0);
        Sci(SCI_ALLOCATE, static_cast<long>(converted.size() + converted.size() / 16));
        Sci(SCI_APPENDTEXT, converted);
    }
    inserted_.reset();
    changed_ = true;
    Select({});
    Settle();
}

std::int32_t TextBox::TextLength() const { return static_cast<std::int32_t>(Sci(SCI_GETLENGTH)); }

std::int32_t TextBox::Clamp(std::int32_t offset) const { return std::clamp(offset, 0, TextLength()); }

std::string TextBox::TextRange(std::int32_t start, std::int32_t length) const {
    const std::int32_t from = Clamp(start);
    return std::string(RangeView(from, std::clamp(length, 0, TextLength() - from)));
}

std::string_view TextBox::TextView() const {
    const auto* bytes = static_cast<const char*>(SendScintillaPtrResult(SCI_GETCHARACTERPOINTER));
    return {bytes, static_cast<std::size_t>(TextLength())};
}

// Within bounds; leaves the buffer's gap where it is unless the range spans it.
std::string_view TextBox::RangeView(std::int32_t start, std::int32_t length) const {
    if (length == 0) return {};
    const auto address =
        SendScintilla(SCI_GETRANGEPOINTER, static_cast<unsigned long>(start), static_cast<long>(length));
    return {reinterpret_cast<const char*>(address), static_cast<std::size_t>(length)};
}

TextBox::Span TextBox::Selection() const {
    const long anchor = Sci(SCI_GETANCHOR);
    const long caret = Sci(SCI_GETCURRENTPOS);
    if (inside_ && anchor == inside_->Anchor && caret == inside_->Caret) return inside_->Wanted;
    return {static_cast<std::int32_t>(std::min(anchor, caret)),
            static_cast<std::int32_t>(std::max(anchor, caret) - std::min(anchor, caret))};
}

// While frozen the view stays where it is.
void TextBox::Select(Span span) {
    const auto before = [this](long offset) {
        const long previous = Sci(SCI_POSITIONBEFORE, offset);
        return Sci(SCI_POSITIONAFTER, previous) == offset ? offset : previous;
    };
    const long start = before(span.Start);
    const long end = span.Length == 0 ? start : before(span.Start + span.Length);
    pending_.reset();
    inside_.reset();
    Sci(SCI_SETSELECTION, end, start);
    if (start != span.Start || end != span.Start + span.Length)
        inside_ = InsideSelection{span, Sci(SCI_GETANCHOR), Sci(SCI_GETCURRENTPOS)};
    if (frozen_ == 0) Sci(SCI_SCROLLCARET);
    Sci(SCI_CHOOSECARETX);
}

void TextBox::SetSelStart(std::int32_t offset) { Select({Clamp(offset), 0}); }

void TextBox::SetSelLength(std::int32_t length) {
    if (length < 0) throw base::RunTimeError(errInvalidPropertyValue, "Invalid property value");
    const std::int32_t start = SelStart();
    const Span span{start, std::min(length, TextLength() - start)};
    // A selection that stays empty keeps what is typed next.
    if (span != Selection() || span.Length != 0) Select(span);
}

std::string TextBox::SelText() const {
    const Span span = Selection();
    return TextRange(span.Start, span.Length);
}

void TextBox::SetSelText(std::string_view text) {
    const Span span = Selection();
    const std::string converted = base::ToCrLf(text);
    if (span.Length == 0 && converted.empty()) return;
    if (static_cast<std::size_t>(TextLength()) + converted.size() > maxText)
        throw base::RunTimeError(errOutOfMemory, "Out of memory");
    Sci(SCI_SETTARGETSTART, span.Start);
    Sci(SCI_SETTARGETEND, span.Start + span.Length);
    Sci(SCI_REPLACETARGET, converted);
    StyleInserted();
    Select({span.Start + static_cast<std::int32_t>(converted.size()), 0});
    Settle();
}

std::int32_t TextBox::Find(std::string_view text, std::int32_t start, std::int32_t end, int options) {
    const auto from = static_cast<std::size_t>(Clamp(start));
    const auto to = static_cast<std::size_t>(end < 0 ? TextLength() : Clamp(end));
    if (from > to) return -1;
    const std::size_t found =
        SearchText(TextView(), text, from, to, (options & rtfMatchCase) != 0, (options & rtfWholeWord) != 0);
    if (found == std::string_view::npos) return -1;
    const auto offset = static_cast<std::int32_t>(found);
    if ((options & rtfNoHighlight) == 0) {
        Select({offset, static_cast<std::int32_t>(text.size())});
        if (frozen_ == 0) Sci(SCI_SCROLLRANGE, offset + static_cast<long>(text.size()), offset);
    }
    return offset;
}

void TextBox::UpTo(std::string_view set, bool forward) {
    std::array<bool, 256> members{};
    for (const char c : set) members[static_cast<unsigned char>(c)] = true;
    const auto isMember = [&members](char c) { return members[static_cast<unsigned char>(c)]; };
    const Span span = Selection();
    std::int32_t offset = forward ? span.Start + span.Length : span.Start;
    const std::int32_t limit = forward ? TextLength() : 0;
    while (offset != limit) {
        const std::int32_t count = std::min(scanBlock, forward ? limit - offset : offset);
        const std::string_view block = RangeView(forward ? offset : offset - count, count);
        const auto passed = forward ? std::find_if(block.begin(), block.end(), isMember) - block.begin()
                                    : std::find_if(block.rbegin(), block.rend(), isMember) - block.rbegin();
        offset += static_cast<std::int32_t>(forward ? passed : -passed);
        if (passed != count) break;
    }
    Select({offset, 0});
}

// The widget is not really hidden: that would lose the focus.
void TextBox::SetVisible(bool visible) {
    if (visible && frozen_ == 0) return;
    frozen_ += visible ? -1 : 1;
    setUpdatesEnabled(frozen_ == 0);
}

void TextBox::HideCaret() {
    if (++hiddenCarets_ == 1) Sci(SCI_SETCARETSTYLE, CARETSTYLE_INVISIBLE);
}

void TextBox::ShowCaret() {
    if (hiddenCarets_ > 0 && --hiddenCarets_ == 0) Sci(SCI_SETCARETSTYLE, CARETSTYLE_LINE);
}

// Words of 16 bits, as the message has always packed them.
std::intptr_t TextBox::PackedSelection() const {
    const Span span = Selection();
    const auto start = static_cast<std::uint32_t>(span.Start);
    const auto end = start + static_cast<std::uint32_t>(span.Length);
    return static_cast<std::intptr_t>((end & 0xFFFFU) << 16 | (start & 0xFFFFU));
}

long TextBox::CaretLine() const { return Sci(SCI_LINEFROMPOSITION, Sci(SCI_GETCURRENTPOS)); }

std::intptr_t TextBox::LineStart(std::intptr_t line) const {
    if (line == -1) line = CaretLine();
    if (line < 0 || line >= Sci(SCI_GETLINECOUNT)) return -1;
    return Sci(SCI_POSITIONFROMLINE, line);
}

void TextBox::Edit(unsigned message) {
    const long top = Sci(SCI_GETFIRSTVISIBLELINE);
    const long left = Sci(SCI_GETXOFFSET);
    Sci(message);
    Settle();
    if (frozen_ == 0) return;
    Sci(SCI_SETFIRSTVISIBLELINE, top);
    Sci(SCI_SETXOFFSET, left);
}

std::intptr_t TextBox::SendMessage(EditMessage message, std::intptr_t first, std::intptr_t) {
    switch (message) {
        case EM_GETSEL:
            return PackedSelection();
        case EM_SCROLL:
            if (first == SB_LINEDOWN) Sci(SCI_LINESCROLL, 0, 1);
            return 0;
        case EM_LINEINDEX:
            return LineStart(first);
        case EM_LINEFROMCHAR:
            return first == -1 ? CaretLine()
                               : Sci(SCI_LINEFROMPOSITION, Clamp(static_cast<std::int32_t>(first)));
        case EM_GETFIRSTVISIBLELINE:
            return Sci(SCI_GETFIRSTVISIBLELINE);
        case EM_UNDO:
            Edit(SCI_UNDO);
            return 1;
        case WM_CUT:
            Edit(SCI_CUT);
            return 0;
        case WM_COPY:
            Edit(SCI_COPY);
            return 0;
        case WM_PASTE:
            Edit(SCI_PASTE);
            return 0;
    }
    return 0;
}

}  // namespace platform::qt
