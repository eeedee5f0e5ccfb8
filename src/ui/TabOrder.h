#pragma once

class QWidget;

namespace kestrune {

/// Puts next behind before in the tab order, also while one of them takes no focus: a row without a control that can be
/// used takes it later, and the place of a list is where its rows belong. Both are in one window.
void putBehind(QWidget& before, QWidget& next);

}  // namespace kestrune
