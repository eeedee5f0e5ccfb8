#pragma once

#include <QWidget>

namespace kestrune {

class Button;
class TextLabel;

/// A scan of which nothing is known yet: the folder's name, that it is being measured, and the way to stop it.
class ExplorerMeasuring final : public QWidget {
    Q_OBJECT

public:
    explicit ExplorerMeasuring(QWidget* parent = nullptr);

    void setFolderName(const QString& name);

    [[nodiscard]] Button* stopButton() const { return m_stop; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    TextLabel* m_name;
    Button* m_stop;
};

}  // namespace kestrune
