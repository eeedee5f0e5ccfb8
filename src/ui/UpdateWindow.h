#pragma once

#include <QWidget>

namespace kestrune {

/// The window about updates: checking, the question, the download, the outcome.
class UpdateWindow final : public QWidget {
    Q_OBJECT

public:
    explicit UpdateWindow(QWidget* parent = nullptr);
};

}  // namespace kestrune
