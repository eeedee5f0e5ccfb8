#pragma once

#include <QString>
#include <QWidget>

namespace kestrune {

class TextLabel;

/// The program's name and version, and beside it how updates stand.
class VersionLine final : public QWidget {
    Q_OBJECT

public:
    explicit VersionLine(const QString& version, QWidget* parent = nullptr);

    void setStatus(const QString& status);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    TextLabel* m_version;
    TextLabel* m_status;
};

}  // namespace kestrune
