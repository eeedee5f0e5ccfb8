#include "ui/UpdateWindow.h"

namespace kestrune {

UpdateWindow::UpdateWindow(QWidget* parent) : QWidget(parent) {
}

}  // namespace kestrune
