#pragma once

#include <Qsci/qsciscintillabase.h>

#include <QAccessible>
#include <deque>
#include <functional>
#include <optional>

#include "platform/RichTextBox.h"
#include "platform/qt/TextBoxStyles.h"

class QPrinter;

namespace platform::qt {

// The text control. White paper and black text whatever the desktop's colours; no word wrap; tabs of eight.
class TextBox : public QsciScintillaBase, public RichTextBox, private QAccessible::ActivationObserver {
    Q_OBJECT

  public:
    explicit TextBox(QWidget* parent = nullptr);
    ~TextBox() override;

    void SetPaper(std::int32_t color);  // 0x00BBGGRR; white at first
    bool IsOvertyping() const { return SendScintilla(SCI_GETOVERTYPE) != 0; }

    std::string Text() const override;
    void SetText(std::string_view text) override;
    std::int32_t TextLength() const override;
    std::string TextRange(std::int32_t start, std::int32_t length) const override;
    std::string_view TextView() const override;

    std::int32_t SelStart() const override { return Selection().Start; }
    void SetSelStart(std::int32_t offset) override;
    std::int32_t SelLength() const override { return Selection().Length; }
    void SetSelLength(std::int32_t length) override;
    std::string SelText() const override;
    void SetSelText(std::string_view text) override;

    CharFormat SelFormat() const override { return SelStyle().Format; }
    void SetSelColor(std::int32_t color) override;
    void SetSelBold(bool on) override;
    void SetSelItalic(bool on) override;
    void SetSelUnderline(bool on) override;
    std::string SelFontName() const override { return SelStyle().FontName; }
    void SetSelFontName(const std::string& name) override;
    double SelFontSize() const override { return SelStyle().FontSize / 100.0; }
    void SetSelFontSize(double size) override;
    void SetDefaultFont(const std::string& name, double size) override;
    void ApplyFormats(std::span<const FormatRun> runs) override;

    std::int32_t Find(std::string_view text, std::int32_t start, std::int32_t end, int options) override;
    void UpTo(std::string_view set, bool forward) override;

    void SetVisible(bool visible) override;
    void HideCaret() override;
    void ShowCaret() override;
    std::intptr_t SendMessage(EditMessage message, std::intptr_t first = 0,
                              std::intptr_t second = 0) override;

    // The selection, or the text without one, as it looks in the window, broken into pages; an empty text is
    // an empty page. False if the printer fails.
    bool Print(QPrinter& printer);

  signals:
    void Changed();           // the text, not merely its formatting; at the end of an edit
    void SelectionToggled();  // something is selected now, or nothing any more
    // Windows virtual key code; once for each key let go, not for its repetitions. What an input method
    // hands over counts as code 229.
    void KeyReleased(int virtualKeyCode);
    void RightButtonPressed(QPoint global);

  protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    QByteArray fromMimeData(const QMimeData* source, bool& rectangular) const override;
    QMimeData* toMimeData(const QByteArray& text, bool rectangular) const override;

  private:
    struct Span {
        std::int32_t Start = 0;
        std::int32_t Length = 0;
        bool operator==(const Span&) const = default;
    };
    // A selection that the program set with an end inside a character or a line end, where the control can't
    // stand. It ends with the first edit or move of anyone.
    struct InsideSelection {
        Span Wanted;
        long Anchor = -1;  // what the control made of it
        long Caret = -1;
    };
    // What is typed next at an offset, set by formatting an empty selection.
    struct PendingStyle {
        std::int32_t Offset = 0;
        CharStyle Style;
    };
    // The formatting of removed text, for undo and redo to bring back.
    struct RemovedStyles {
        std::int32_t Start = 0;
        std::size_t TextHash = 0;
        std::string Styles;
    };
    struct Insertion {
        Span Where;
        bool Again = false;  // by undo or redo
    };
    class Repaint;
    class StyleWindow;

    long Sci(unsigned message, long first = 0, long second = 0) const;
    long Sci(unsigned message, std::string_view bytes) const;
    std::string_view RangeView(std::int32_t start, std::int32_t length) const;
    std::int32_t Clamp(std::int32_t offset) const;
    void SetUpControl();
    void SetUpColors();
    void UpdateMargin();

    Span Selection() const;
    void Select(Span span);
    std::intptr_t PackedSelection() const;
    long CaretLine() const;
    std::intptr_t LineStart(std::intptr_t line) const;
    void Edit(unsigned message);
    bool PrintAll(QPrinter& printer);
    void CopySelectionTo(TextBox& other) const;  // which is only to be printed

    void accessibilityActiveChanged(bool active) override;
    void ListenToModifications();
    void OnModification(int position, int type, int length);
    void Settle();
    void StyleInserted();
    StyleTable::Number InsertionNumber(Span span);
    void RememberRemoved(std::int32_t start, std::int32_t length);
    bool RestoreRemoved(Span span);
    void PressKey(QKeyEvent& event);
    Span CaretSurroundings() const;

    CharStyle SelStyle() const;
    StyleTable::Number NumberAt(std::int32_t offset) const;
    void ChangeSelStyle(const std::function<void(CharStyle&)>& change);
    void ChangeStyles(Span span, const std::function<void(CharStyle&)>& change);
    Span WholeCharacters(Span span) const;
    void FillStyle(Span span, StyleTable::Number number);
    void ReadStyles(std::int32_t start, std::int32_t length, std::string& styles) const;
    void WriteStyles(std::int32_t start, std::string_view styles);
    void DefineStyle(StyleTable::Number number, const CharStyle& style);
    void DefineOwnStyles();
    StyleTable::NumberSet NumbersInUse() const;
    void TidyStylesLater();
    void TidyStyles();

    CharStyle default_;
    std::int32_t paper_ = 0xFFFFFF;
    StyleTable styles_;
    std::optional<InsideSelection> inside_;
    std::optional<PendingStyle> pending_;
    std::optional<Insertion> inserted_;  // and not yet styled
    bool changed_ = false;               // and not yet told
    bool hasSelection_ = false;          // as last told
    std::deque<RemovedStyles> removed_;
    std::size_t removedBytes_ = 0;
    int hiddenCarets_ = 0;
    long marginLines_ = -1;  // lines that the margin has room for
    int frozen_ = 0;         // how often it has been hidden
    bool loading_ = false;
    bool tidyDue_ = false;
};

}  // namespace platform::qt
