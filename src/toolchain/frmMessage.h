#pragma once

#include <QListView>
#include <QTimer>
#include <QWidget>
#include <utility>

#include "platform/qt/MdiChild.h"
#include "session/App.h"
#include "toolchain/ErrorCodes.h"
#include "toolchain/windows/MessageModel.h"

namespace toolchain {

// "Messages": the lines that the tools write, kept from run to run. Content of an MDI child window; when the
// user closes that, it is hidden and keeps its lines.
class frmMessage : public QWidget, public platform::qt::MdiChild {
    Q_OBJECT

  public:
    frmMessage(session::App& app, const ErrorCodes& codes, QWidget* parent = nullptr);
    ~frmMessage() override;

    platform::WindowHandle Handle() const { return handle_; }  // of lstMessages: where libraries send to
    void AddLine(const std::string& line);
    void ResetFont();  // name, bold and italic of MessageFont; the size stays

    QMdiSubWindow& Frame() const;
    QMdiSubWindow& Frame() override { return std::as_const(*this).Frame(); }
    std::string Title() const override;
    std::optional<QRect> PlaceIn(const platform::qt::ChildPlaces& places) const override {
        return places.Messages;
    }

    // Shows the explanation of the selected line if it begins with an error code.
    void lstMessages_Click();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void Receive(const platform::ToolMessage& message);
    void FitWidth();
    void LayOut();

    session::App& app_;
    const ErrorCodes& codes_;
    MessageModel model_;
    QListView* lstMessages_;
    std::string longest_;  // line, by bytes: as wide as it is, all lines are laid out
    bool follow_ = false;  // the newest line was in view
    QTimer layoutTimer_;   // lays out and scrolls once for many new lines
    platform::WindowHandle handle_;
};

}  // namespace toolchain
