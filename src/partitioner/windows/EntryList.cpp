#include "partitioner/windows/EntryList.h"

#include <QPainter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "platform/qt/Captions.h"
#include "platform/qt/Controls.h"

namespace partitioner {
namespace {

constexpr int inset = 4;  // pixels, on either side of an entry
constexpr int linesShown = 10;

class GridDelegate : public QStyledItemDelegate {
  public:
    explicit GridDelegate(EntryList& list) : QStyledItemDelegate(&list), list_(list) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem blank = option;
        initStyleOption(&blank, index);
        const QString entry = std::exchange(blank.text, QString());
        list_.style()->drawControl(QStyle::CE_ItemViewItem, &blank, painter, &list_);
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        painter->setFont(option.font);
        painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
        static const QRegularExpression text(R"(\S+( \S+)*)");
        for (auto found = text.globalMatch(entry); found.hasNext();) {
            const auto part = found.next();
            const int left = inset + list_.Width(static_cast<int>(part.capturedStart()));
            painter->drawText(option.rect.adjusted(left, 0, 0, 0), Qt::AlignVCenter | Qt::TextSingleLine,
                              part.captured());
        }
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        const auto length = static_cast<int>(index.data().toString().size());
        return {list_.Width(length) + 2 * inset, option.fontMetrics.height() + 1};
    }

  private:
    const EntryList& list_;
};

}  // namespace

EntryList::EntryList(const std::string& name, int characters) {
    platform::qt::Named(name, this);
    QFont times = font();
    times.setFamily("Times New Roman");
    setFont(times);
    setItemDelegate(new GridDelegate(*this));
    setMinimumSize(Width(characters) + 2 * Margin() + verticalScrollBar()->sizeHint().width(),
                   linesShown * (fontMetrics().height() + 1) + 2 * frameWidth());
}

void EntryList::Add(const std::string& entry) {
    auto* item = new QListWidgetItem(platform::qt::LineOf(entry), this);
    item->setData(Qt::UserRole, QByteArray::fromStdString(entry));
}

std::string EntryList::Selected() const {
    const QListWidgetItem* item = currentItem();
    return item == nullptr ? std::string() : item->data(Qt::UserRole).toByteArray().toStdString();
}

int EntryList::Width(int characters) const { return characters * fontMetrics().horizontalAdvance('0'); }
int EntryList::Margin() const { return frameWidth() + inset; }

}  // namespace partitioner
