#pragma once

#include <QString>
#include <QWidget>

namespace kestrune {

class TextLabel;

/// The program's name and version, and how updates stand: beside it, or below it where there is too little room.
class VersionLine final : public QWidget {
    Q_OBJECT

public:
    explicit VersionLine(const QString& version, QWidget* parent = nullptr);

    void setStatus(const QString& status);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }

    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Places {
        QRect version;
        QRect status;
    };

    [[nodiscard]] Places places(int width) const;
    void place();

    TextLabel* m_version;
    TextLabel* m_status;
};

}  // namespace kestrune
