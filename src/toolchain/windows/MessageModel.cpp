#include "toolchain/windows/MessageModel.h"

#include "base/Text.h"
#include "toolchain/windows/DisplayText.h"

namespace toolchain {

void MessageModel::Add(const std::string& line) {
    if (lines_.size() >= MaxLines || bytes_ >= MaxBytes) DropOldest();
    const int row = static_cast<int>(lines_.size());
    beginInsertRows({}, row, row);
    lines_.push_back(base::Left(line, MaxLineLength));
    bytes_ += lines_.back().size();
    endInsertRows();
}

// A twentieth at once: views pay for each removal with all their lines.
void MessageModel::DropOldest() {
    const std::size_t count = lines_.size() / 20 + 1;
    beginRemoveRows({}, 0, static_cast<int>(count) - 1);
    for (std::size_t i = 0; i < count; ++i) {
        bytes_ -= lines_.front().size();
        lines_.pop_front();
    }
    endRemoveRows();
}

void MessageModel::Clear() {
    beginResetModel();
    lines_.clear();
    bytes_ = 0;
    endResetModel();
}

std::string MessageModel::Line(int row) const {
    return row >= 0 && row < rowCount() ? lines_[static_cast<std::size_t>(row)] : std::string();
}

int MessageModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(lines_.size());
}

QVariant MessageModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid()) return {};
    return DisplayLine(Line(index.row()), MaxLineLength);
}

}  // namespace toolchain
