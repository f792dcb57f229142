#pragma once

#include "aids/TableGeometry.h"
#include "aids/TableValues.h"
#include "platform/Host.h"
#include "platform/qt/Form.h"

class QLineEdit;
class QScrollBar;

namespace aids {

class GridSurface;
class RulerSurface;

// Describes a truth table as a grid of bits. OK leaves the statement TABLE on the clipboard, Cancel nothing
// at all.
class frmTable : public platform::qt::Form {
  public:
    frmTable(platform::Host& host, QWidget* owner);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    QLayout* NameFields();
    QLayout* FillModes();
    QLayout* Surfaces();
    QScrollBar* ScrollBar(const char* name, Qt::Orientation orientation);

    void FocusMoved(QWidget* now);
    void LostFocus(const QWidget* left);
    bool IsTaken(QLineEdit& field, const std::optional<Refusal>& refusal);
    void Tell(const std::string& text, QLineEdit* focusBack = nullptr);

    void ArrangeTable(int fontSize);  // in points
    void PaintRuler();
    void PaintGrid();
    void SetScrollBars();
    void PlaceSurfaces();

    void FillInput();
    void Fill_Click();
    void UpDownFont_Change(int step);
    void picGrid_MouseDown(const TableCell& cell);
    void EnterHex(const TableCell& cell);
    void OK_Click();
    void Cancel_Click() override;

    platform::Host& host_;
    TableValues values_;
    TableGeometry geometry_;
    QWidget* focused_ = nullptr;  // the control that loses the focus next; messages and other windows aside
    bool isTalking_ = false;      // a message or a question is due or shown
    QLineEdit* txtInput;
    QLineEdit* txtInWidth;
    QLineEdit* txtOutput;
    QLineEdit* txtOutWidth;
    QLineEdit* txtRows;
    QLineEdit* txtFrom;
    QButtonGroup* fill_;
    QWidget* picParentRuler;
    QWidget* picParentGrid;
    RulerSurface* picRuler;
    GridSurface* picGrid;
    QScrollBar* HScroll;
    QScrollBar* VScroll;
    QObject listener_;  // of the focus; the first to go
};

}  // namespace aids
