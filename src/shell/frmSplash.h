#pragma once

#include <QWidget>

namespace shell {

// The picture with the version that stands on the screen while the program starts.
class frmSplash : public QWidget {
    Q_OBJECT

  public:
    frmSplash();
    void ShowAndPaint();
};

// "Version 5.0.0", of the program's version resource.
QString VersionText();

}  // namespace shell
