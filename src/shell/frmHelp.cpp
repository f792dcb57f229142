#include "shell/frmHelp.h"

#include <QApplication>
#include <QLineEdit>
#include <QScreen>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTextTable>
#include <QTreeWidgetItemIterator>
#include <QUrl>
#include <QWindow>

#include "base/Text.h"
#include "platform/qt/Captions.h"
#include "platform/qt/Guard.h"

namespace shell {
namespace {

using platform::qt::Column;
using platform::qt::Label;
using platform::qt::Named;
using platform::qt::On;
using platform::qt::Row;
using platform::qt::Shown;

constexpr int bookRole = Qt::UserRole;
constexpr int pageRole = Qt::UserRole + 1;
constexpr int characters = 120;
constexpr int lines = 36;
constexpr int pageShare = 2;  // of the width, to one of the list
constexpr qreal cellPadding = 3;

HelpPlace PlaceOf(const QTreeWidgetItem& line) {
    return {static_cast<std::size_t>(line.data(0, bookRole).toULongLong()),
            static_cast<std::size_t>(line.data(0, pageRole).toULongLong())};
}

// The toolkit draws the tables of a text without lines.
void RuleTables(const QTextFrame& frame) {
    for (QTextFrame* child : frame.childFrames()) {
        if (auto* table = qobject_cast<QTextTable*>(child)) {
            QTextTableFormat format = table->format();
            format.setBorder(1);
            format.setBorderCollapse(true);
            format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
            format.setCellPadding(cellPadding);
            table->setFormat(format);
        }
        RuleTables(*child);
    }
}

}  // namespace

frmHelp::frmHelp(HelpLibrary library)
    : Form("frmHelp", "Korvane Help", nullptr),
      library_(std::move(library)),
      txtFind(Named("txtFind", new QLineEdit)),
      lstPages(Named("lstPages", new QTreeWidget)),
      txtPage(Named("txtPage", new QTextBrowser)),
      back_(Button({"Back", "&Back", [this] { Back_Click(); }})) {
    setWindowFlag(Qt::Window);
    txtFind->setClearButtonEnabled(true);
    lstPages->setHeaderHidden(true);
    lstPages->setAccessibleName("Pages");
    txtPage->setAccessibleName("Page");
    txtPage->setOpenLinks(false);
    auto* parts = new QSplitter;
    parts->addWidget(lstPages);
    parts->addWidget(txtPage);
    parts->setStretchFactor(1, pageShare);
    QPushButton* close = Button({"Close", "&Close", [this] { accept(); }});
    for (QPushButton* button : {back_, close}) button->setAutoDefault(false);  // Enter is for the search
    LayOut({Row({Label("lblFind", "&Search:", txtFind), txtFind, back_, close}), parts}, Size::OfUser);
    ResizeTo(characters, lines);
    const QRect room = screen()->availableGeometry();  // at its edge, beside what it tells of
    move(room.right() - width() - platform::qt::InCharacters(1, 1).width(), room.top());
    parts->setSizes({width() / (pageShare + 1), width() * pageShare / (pageShare + 1)});
    On(txtFind, &QLineEdit::textChanged, this, [this] { ListFound(); });
    On(txtFind, &QLineEdit::returnPressed, this, [this] { ReadFound(); });
    On(lstPages, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* line) {
        if (line != nullptr) Read(PlaceOf(*line));
    });
    On(txtPage, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { FollowLink(link); });
    ListContents();
}

void frmHelp::ShowPage(HelpPlace place) {
    txtFind->clear();
    Read(place);
    txtPage->setFocus();
}

void frmHelp::ShowSearch(const std::string& query) {
    if (read_.empty()) Read({});
    txtFind->setText(Shown(query));
    txtFind->setFocus();
}

// A window takes input beside a modal one only as its child.
void frmHelp::BringUp() {
    QWidget* modal = QApplication::activeModalWidget();
    QWindow* above = modal == nullptr ? nullptr : modal->window()->windowHandle();
    winId();
    if (windowHandle()->transientParent() != above) {
        hide();
        windowHandle()->setTransientParent(above);
    }
    show();
    raise();
    activateWindow();
}

void frmHelp::Back_Click() {
    read_.pop_back();
    Display(read_.back());
}

// To a page that is not the one being read.
void frmHelp::Read(HelpPlace place) {
    if (!read_.empty() && read_.back() == place) return Mark(place);
    read_.push_back(place);
    Display(place);
}

void frmHelp::Display(HelpPlace place) {
    back_->setEnabled(read_.size() > 1);
    txtPage->setMarkdown(Shown(library_.PageText(place)));
    RuleTables(*txtPage->document()->rootFrame());
    txtPage->moveCursor(QTextCursor::Start);
    MarkWords();
    const auto marks = txtPage->extraSelections();
    if (!marks.isEmpty()) {
        QTextCursor first = marks.front().cursor;
        first.setPosition(first.selectionStart());
        txtPage->setTextCursor(first);
    }
    Mark(place);
}

void frmHelp::MarkWords() {
    QList<QTextEdit::ExtraSelection> marks;
    QTextCharFormat format;
    format.setBackground(palette().highlight());
    format.setForeground(palette().highlightedText());
    const std::string query = txtFind->text().toStdString();
    for (const std::string_view word : base::Words(query)) {
        QTextCursor at(txtPage->document());
        while (!(at = txtPage->document()->find(Shown(word), at)).isNull()) marks.append({at, format});
    }
    txtPage->setExtraSelections(marks);
}

// In the list, if the page is there.
void frmHelp::Mark(HelpPlace place) {
    const QSignalBlocker noReading(lstPages);
    for (QTreeWidgetItemIterator line(lstPages); *line != nullptr; ++line) {
        if (PlaceOf(**line) == place) return lstPages->setCurrentItem(*line);
    }
    lstPages->setCurrentItem(nullptr);
}

// The first one, unless the page being read is among them.
void frmHelp::ReadFound() {
    if (lstPages->currentItem() == nullptr) lstPages->setCurrentItem(lstPages->topLevelItem(0));
    lstPages->setFocus();
}

void frmHelp::FollowLink(const QUrl& link) {
    if (const auto place = library_.Follow(link.toString().toStdString(), read_.back().Book)) Read(*place);
}

QTreeWidgetItem* frmHelp::Line(QTreeWidgetItem* parent, HelpPlace place, const QString& text) {
    auto* line = new QTreeWidgetItem(parent, {text});
    line->setData(0, bookRole, static_cast<qulonglong>(place.Book));
    line->setData(0, pageRole, static_cast<qulonglong>(place.Page));
    return line;
}

void frmHelp::ListContents() {
    const QSignalBlocker noReading(lstPages);
    lstPages->clear();
    lstPages->setRootIsDecorated(true);
    for (std::size_t book = 0; book < library_.Books.size(); ++book) {
        std::vector<QTreeWidgetItem*> path = {lstPages->invisibleRootItem()};
        for (std::size_t page = 0; page < library_.Books[book].Pages.size(); ++page) {
            const HelpPage& each = library_.Page({book, page});
            path.resize(std::min(path.size(), static_cast<std::size_t>(each.Level)));
            path.push_back(Line(path.back(), {book, page}, Shown(each.Title)));
        }
    }
    if (!read_.empty()) Mark(read_.back());
}

void frmHelp::ListFound() {
    const std::string query = txtFind->text().toStdString();
    if (base::TrimView(query).empty()) {
        MarkWords();
        return ListContents();
    }
    const QSignalBlocker noReading(lstPages);
    lstPages->clear();
    lstPages->setRootIsDecorated(false);
    for (const HelpPlace place : library_.Search(query)) {
        const QString book = Shown(library_.Page({place.Book, 0}).Title);
        const QString title = Shown(library_.Page(place).Title);
        Line(lstPages->invisibleRootItem(), place, place.Page == 0 ? title : title + " - " + book);
    }
    MarkWords();
    if (!read_.empty()) Mark(read_.back());
}

}  // namespace shell
