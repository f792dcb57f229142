#include "platform/qt/HostPrinters.h"

#include <sys/mman.h>

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QPushButton>
#include <cerrno>

#include "base/AtomicFile.h"
#include "base/RunTimeError.h"
#include "base/ScopeExit.h"
#include "platform/qt/Form.h"
#include "platform/qt/Guard.h"
#include "platform/qt/TextBox.h"

namespace platform::qt {
namespace {

// The dialog offers pages even when it is told not to.
void HidePageNumbers(const QPrintDialog& box) {
    for (const char* name : {"printRange", "from", "to", "pagesRadioButton", "pagesLineEdit"})
        if (auto* control = box.findChild<QWidget*>(name)) control->hide();
    const auto* range = box.findChild<QWidget*>("gbPrintRange");
    if (auto* to = range != nullptr ? range->findChild<QWidget*>("label_3") : nullptr) to->hide();
}

// Opens the part of the dialog that has the choice between all and the selection.
void ShowOptions(const QDialogButtonBox& buttons) {
    for (auto* button : buttons.buttons())
        if (buttons.buttonRole(button) == QDialogButtonBox::ResetRole) button->click();
}

QPrintDialog* MakeDialog(QPrinter& printer, int flags, QWidget* parent) {
    const bool isSetup = (flags & PrintSetup) != 0;
    auto* box = new QPrintDialog(&printer, parent);
    box->setObjectName("PrinterDialog");
    box->setWindowTitle(isSetup ? "Print Setup" : "Print");
    box->setOption(QAbstractPrintDialog::PrintPageRange, false);
    box->setOption(QAbstractPrintDialog::PrintSelection, !isSetup);
    if ((flags & NoPageNumbers) != 0) HidePageNumbers(*box);
    if (auto* choice = box->findChild<QWidget*>("printSelection"))
        choice->setEnabled((flags & NoSelection) == 0);
    // Its suggestions would take the Return that is meant to print.
    if (auto* file = box->findChild<QLineEdit*>("filename")) file->setCompleter(nullptr);
    auto* buttons = box->findChild<QDialogButtonBox*>();
    if (buttons != nullptr && isSetup) {
        if (auto* ok = buttons->button(QDialogButtonBox::Ok)) ok->setText("OK");
    } else if (buttons != nullptr) {
        ShowOptions(*buttons);
    }
    return box;
}

void PrintOn(QPrinter& printer, TextBox& box) {
    if (!box.Print(printer)) throw base::RunTimeError(base::errPrinter);
}

}  // namespace

HostPrinters::HostPrinters(std::function<QWidget*()> parent) : parent_(std::move(parent)) {}

int HostPrinters::Count() const {
    constexpr int pdfFile = 1;
    return static_cast<int>(QPrinterInfo::availablePrinterNames().size()) + pdfFile;
}

QPrinter& HostPrinters::Printer() {
    if (!printer_) printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    return *printer_;
}

std::optional<int> HostPrinters::Choose(int flags) {
    Printer().setPrintRange(QPrinter::AllPages);
    Modal<QPrintDialog> box(MakeDialog(Printer(), flags, parent_()));
    if (!box.Run()) return std::nullopt;
    const bool isSelection = Printer().printRange() == QPrinter::Selection;
    return isSelection ? flags | PrintSelection : flags & ~PrintSelection;
}

void HostPrinters::Print(RichTextBox& text) {
    const auto error = ErrorOf([&] {
        auto& box = dynamic_cast<TextBox&>(text);
        Printer().outputFormat() == QPrinter::PdfFormat ? PrintToFile(box) : PrintOn(Printer(), box);
    });
    if (error) ShowErrorSoon("The text could not be printed: " + *error);
}

// By way of memory: the toolkit does not look whether what it writes reaches a file, and cuts an old one off
// before it begins.
void HostPrinters::PrintToFile(TextBox& box) {
    const QString target = Printer().outputFileName();
    const base::Descriptor memory(::memfd_create("print", MFD_CLOEXEC));
    if (memory.Get() < 0) base::RaiseErrno(errno, target.toStdString());
    const std::string pages = "/proc/self/fd/" + std::to_string(memory.Get());
    const base::ScopeExit restore([&] { Printer().setOutputFileName(target); });
    Printer().setOutputFileName(QString::fromStdString(pages));
    base::AtomicFile file(target.toStdString());
    PrintOn(Printer(), box);
    std::string bytes;
    base::ReadBlocks(memory, pages, [&](std::string_view block) { bytes += block; });
    if (!bytes.ends_with("%%EOF\n")) throw base::RunTimeError(base::errDiskFull);
    file.Write(bytes);
    file.Commit();
}

}  // namespace platform::qt
