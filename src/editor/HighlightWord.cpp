#include <algorithm>
#include <string>

#include "base/ScopeExit.h"
#include "base/Text.h"
#include "base/modLib.h"
#include "editor/Highlighter.h"

// The work after a key. It touches the neighbourhood of the caret only, never the whole text.
namespace editor {
namespace {

using platform::RichTextBox;

// One run for one key. Positions count from 1, as in "the character at p is left of the caret p".
class KeyPainter {
  public:
    KeyPainter(const session::Session& state, session::Document& document)
        : state_(state), document_(document), box_(document.txtText()), caret_(box_.SelStart()) {}

    void Run() {
        const std::string typed = Mid(caret_, 1);
        if (typed.empty() || base::IsLineEnd(typed[0])) return;
        if (document_.InComment) {
            CloseComment();
        } else if (Mid(caret_ - 1, 2) == "/*") {
            document_.InComment = true;  // nothing is painted until it is closed
            document_.CommentStart = caret_ - 2;
        } else {
            PaintNeighbours(typed[0]);
        }
    }

  private:
    std::string Mid(Offset position, Offset count) const {
        return position < 1 ? std::string() : box_.TextRange(position - 1, count);
    }

    void CloseComment() {
        if (Mid(caret_ - 1, 2) != "*/") return;
        Unseen([this] {
            ColorRange(state_, box_, document_.CommentStart, caret_ - document_.CommentStart,
                       KeywordIndex(state_, "COMMENTS"));
        });
        document_.InComment = false;
    }

    void PaintNeighbours(char typed) {
        Unseen([this, typed] {
            if (base::IsWordChar(typed))
                PaintWordAtCaret();
            else
                PaintWordsAroundDelimiter();
            // The delimiter loses the colour it took from the word before it.
            if (base::Contains(state_.Delimiters, std::string_view(&typed, 1))) {
                ColorRange(state_, box_, caret_ - 1, 1, -1);
            }
        });
    }

    // The caret is where it was afterwards, and so is the view, also over text far from the caret.
    template <typename Work>
    void Unseen(const Work& work) {
        const platform::HiddenCaretScope hiddenCaret(box_);
        const platform::HiddenScope hidden(box_);
        const base::ScopeExit caretBack([this] { box_.SetSelStart(caret_); });
        work();
    }

    void PaintWordsAroundDelimiter() {
        box_.SetSelStart(caret_ - 1);
        box_.UpTo(state_.Delimiters, false);
        PaintWord(box_.SelStart() + 1, caret_);
        const std::string behind = Mid(caret_ + 1, 1);
        if (behind.empty() || !base::IsWordChar(behind[0])) return;
        box_.SetSelStart(caret_ + 1);
        const Offset first = box_.SelStart();
        PaintWord(first, EndOfWord(first));
    }

    void PaintWordAtCaret() {
        box_.UpTo(state_.Delimiters, false);
        const Offset first = box_.SelStart() + 1;
        PaintWord(first, EndOfWord(first));
    }

    // The position behind the word whose first character is left of the offset `inside`.
    Offset EndOfWord(Offset inside) {
        box_.SetSelStart(inside);
        box_.UpTo(state_.Delimiters, true);
        return box_.SelStart() + 1;
    }

    // Positions of the first character and behind the last. A dollar sign before the word belongs to it.
    void PaintWord(Offset first, Offset end) {
        if (Mid(first - 1, 1) == "$") --first;
        const std::string word = Mid(first, end - first);
        ColorRange(state_, box_, first - 1, static_cast<Offset>(word.size()), KeywordIndex(state_, word));
    }

    const session::Session& state_;
    session::Document& document_;
    RichTextBox& box_;
    const Offset caret_;
};

}  // namespace

void HighlightWord(session::App& app, session::Document& document) {
    // What is selected was not typed just now, and stays selected: the key let go may be that of a copy.
    if (document.txtText().SelLength() > 0) return;
    if (app.State.HighlightEnabled && IsDesign(document)) KeyPainter(app.State, document).Run();
}

bool IsHighlightKey(const session::Session& state, int keyCode) {
    return std::find(state.NoHighlightKeys.begin(), state.NoHighlightKeys.end(), keyCode) ==
           state.NoHighlightKeys.end();
}

}  // namespace editor
