#pragma once

#include <QString>
#include <QWidget>

namespace kestrune {

class TextLabel;

/// A sentence about how things stand, and a note under it.
class StatusRow final : public QWidget {
    Q_OBJECT

public:
    explicit StatusRow(QWidget* parent = nullptr);

    /// An empty note takes no room.
    void setTexts(const QString& sentence, const QString& note);

private:
    TextLabel* m_sentence;
    TextLabel* m_note;
};

}  // namespace kestrune
