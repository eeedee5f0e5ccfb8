#pragma once

#include <QWidget>
#include <string>
#include <vector>

class QVBoxLayout;

namespace kestrune {

/// What went wrong with the last scan, one warning below the other. It takes no room while there is none.
class NoteStrips final : public QWidget {
    Q_OBJECT

public:
    explicit NoteStrips(QWidget* parent = nullptr);

    void setNotes(const std::vector<std::string>& notes);

private:
    QVBoxLayout* m_layout;
};

}  // namespace kestrune
