#pragma once

#include <QString>
#include <QWidget>

namespace kestrune {

/// The symbol of a question or a message on its tinted ground. An ornament: what it stands for is said in words beside
/// it.
class SymbolPlate final : public QWidget {
    Q_OBJECT

public:
    explicit SymbolPlate(const QString& symbol, QWidget* parent = nullptr);

    void setSymbol(const QString& symbol);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_symbol;
};

}  // namespace kestrune
