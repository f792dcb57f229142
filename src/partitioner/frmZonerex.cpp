#include "partitioner/frmZonerex.h"

#include "base/Text.h"
#include "partitioner/windows/EntryList.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Guard.h"

namespace partitioner {
namespace {

constexpr int entryLength = 78;

// A heading over the columns of the entries that end at a character.
struct Heading {
    const char* Name;
    const char* Caption;
    int Characters;
    Qt::Alignment Side;
};
constexpr Heading headings[] = {
    {"Label12", "Devices", 60, Qt::AlignLeft},
    {"Label10", "Power", 8, Qt::AlignRight},
    {"Label11", "Cost", 8, Qt::AlignRight},
};

// Hands the lines that a library adds to `take`.
platform::WindowHandle Register(platform::Host& host, std::function<void(const std::string&)> take) {
    return host.Libraries.Register([take = std::move(take)](const platform::ToolMessage& message) {
        if (message.Number == platform::msgAddString) take(message.Second);
    });
}

}  // namespace

frmZonerex::frmZonerex(session::App& app, QWidget* owner)
    : Form("frmZonerex", "Zonerex", owner),
      app_(app),
      cmbDevices(new EntryList("cmbDevices", entryLength)),
      txtMsgBox(platform::qt::Named("txtMsgBox", new QPlainTextEdit)),
      messages_(Register(app.Host, [this](const std::string& line) { AddMessage(line); })),
      // Kept: an entry ends in a character that is not shown.
      solutions_(Register(app.Host,
                          [this](const std::string& line) {
                              cmbDevices->Add(line.substr(0, line.empty() ? 0 : line.size() - 1));
                          })),
      run_(app, messages_, solutions_) {
    cmbDevices->setAccessibleName("Solutions");
    txtMsgBox->setAccessibleName("Messages");
    txtMsgBox->setReadOnly(true);
    platform::qt::On(cmbDevices, &QListWidget::itemDoubleClicked, this, [this] { cmbDevices_DblClick(); });
    LayOut({Headings(), cmbDevices, txtMsgBox,
            Buttons({{"Test", "Find Solutions", [this] { Test_Click(); }},
                     {"Fit", "Fit Selection", [this] { Fit_Click(); }},
                     {"Cancel", "Cancel", [this] { Cancel_Click(); }}})},
           Size::OfUser);
    Control<QPushButton>("Fit").setEnabled(false);
    ResizeTo(96, 30);
}

frmZonerex::~frmZonerex() {
    for (const auto handle : {messages_, solutions_}) app_.Host.Libraries.Unregister(handle);
}

QLayout* frmZonerex::Headings() {
    QBoxLayout* row = platform::qt::Row({});
    row->setSpacing(0);
    row->addSpacing(cmbDevices->Margin());
    for (const Heading& heading : headings) {
        QLabel* label = platform::qt::Label(heading.Name, heading.Caption);
        label->setAlignment(heading.Side);
        label->setFixedWidth(cmbDevices->Width(heading.Characters));
        row->addWidget(label);
    }
    row->addStretch(1);
    return row;
}

// Kept: each line behind a line end, so that the first stands below an empty one.
void frmZonerex::AddMessage(const std::string& line) {
    ShowEnd();
    txtMsgBox->insertPlainText("\n" + platform::qt::Shown(line));
    txtMsgBox->ensureCursorVisible();
}

void frmZonerex::ShowEnd() { txtMsgBox->moveCursor(QTextCursor::End); }

void frmZonerex::Test_Click() {
    cmbDevices->clear();
    txtMsgBox->clear();
    const auto solutions = run_.FindSolutions();
    ShowEnd();
    if (solutions <= 0) return;
    run_.ListSolutions();
    ShowEnd();
    Control<QPushButton>("Fit").setEnabled(true);  // kept: no later search disables it
    cmbDevices->setCurrentRow(0);
}

void frmZonerex::Fit_Click() {
    run_.Fit(cmbDevices->Selected());
    ShowEnd();
}

void frmZonerex::cmbDevices_DblClick() {
    run_.FitSolution(cmbDevices->Selected());
    ShowEnd();
}

}  // namespace partitioner
