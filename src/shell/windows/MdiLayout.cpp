#include "shell/windows/MdiLayout.h"

#include <QMdiArea>
#include <QMdiSubWindow>

namespace shell {
namespace {

constexpr int cascadeStep = 26;  // pixels: a title bar

QList<QMdiSubWindow*> NormalWindows(const QMdiArea& area) {
    QList<QMdiSubWindow*> windows;
    for (QMdiSubWindow* window : area.subWindowList(QMdiArea::StackingOrder)) {
        if (!window->isVisible()) continue;
        if (window->isMaximized()) window->showNormal();
        if (!window->isMinimized()) windows.append(window);
    }
    return windows;
}

// The free height: minimised windows stand at the foot.
int FreeHeight(const QMdiArea& area) {
    int height = area.viewport()->height();
    for (const QMdiSubWindow* window : area.subWindowList()) {
        if (window->isVisible() && window->isMinimized()) height = qMin(height, window->y());
    }
    return qMax(height, 100);
}

void CascadeWindows(const QMdiArea& area) {
    const QList<QMdiSubWindow*> windows = NormalWindows(area);
    const QSize whole(area.viewport()->width(), FreeHeight(area));
    const QSize size = whole * 3 / 4;
    const int places = qMax(1, (whole.height() - size.height()) / cascadeStep + 1);
    for (int i = 0; i < windows.size(); ++i) {
        const int at = (i % places) * cascadeStep;
        windows[i]->setGeometry(QRect(QPoint(at, at), size));
    }
}

void TileWindows(const QMdiArea& area, bool sideBySide) {
    const QList<QMdiSubWindow*> windows = NormalWindows(area);
    const int count = static_cast<int>(windows.size());
    const int width = area.viewport()->width();
    const int height = FreeHeight(area);
    for (int i = 0; i < count; ++i) {
        const QRect place = sideBySide ? QRect(width * i / count, 0, width / count, height)
                                       : QRect(0, height * i / count, width, height / count);
        windows[count - 1 - i]->setGeometry(place);
    }
}

void ArrangeIcons(const QMdiArea& area) {
    int left = 0;
    int foot = area.viewport()->height();
    for (QMdiSubWindow* window : area.subWindowList()) {
        if (!window->isVisible() || !window->isMinimized()) continue;
        if (left > 0 && left + window->width() > area.viewport()->width()) {
            left = 0;
            foot -= window->height();
        }
        window->move(left, foot - window->height());
        left += window->width();
    }
}

}  // namespace

void Arrange(QMdiArea& area, MdiArrangement arrangement) {
    switch (arrangement) {
        case MdiArrangement::Cascade:
            CascadeWindows(area);
            break;
        case MdiArrangement::TileHorizontal:
            TileWindows(area, false);
            break;
        case MdiArrangement::TileVertical:
            TileWindows(area, true);
            break;
        case MdiArrangement::ArrangeIcons:
            ArrangeIcons(area);
            break;
    }
}

}  // namespace shell
