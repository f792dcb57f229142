#pragma once

#include <QAbstractListModel>
#include <deque>
#include <string>

namespace toolchain {

// The lines of the message list. Of a line that is longer than MaxLineLength the rest is dropped; when there
// are too many, the oldest go.
class MessageModel : public QAbstractListModel {
    Q_OBJECT

  public:
    static constexpr std::size_t MaxLines = 200'000;
    static constexpr std::size_t MaxLineLength = 2'000;  // bytes
    static constexpr std::size_t MaxBytes = 64u << 20;   // of all lines together

    using QAbstractListModel::QAbstractListModel;

    void Add(const std::string& line);
    void Clear();
    std::string Line(int row) const;  // as it came; empty for a row that is not there

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    void DropOldest();

    std::deque<std::string> lines_;
    std::size_t bytes_ = 0;
};

}  // namespace toolchain
