#include "ui/SymbolPlate.h"

#include <QPainter>

#include "ui/Icons.h"
#include "ui/Paint.h"

namespace kestrune {

namespace {

constexpr int plateSize = 48;
constexpr int symbolSize = 28;
constexpr double corner = 12;

}  // namespace

SymbolPlate::SymbolPlate(const QString& symbol, QWidget* parent) : QWidget(parent), m_symbol(symbol) {
    setFixedSize(Metrics::px(plateSize), Metrics::px(plateSize));
}

void SymbolPlate::setSymbol(const QString& symbol) {
    if (m_symbol != symbol) {
        m_symbol = symbol;
        update();
    }
}

void SymbolPlate::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    Paint::rounded(painter, rect(), corner, Theme::colour(Colour::tint));
    const int symbol = Metrics::px(symbolSize);
    const double inset = (width() - symbol) / 2.0;
    Icons::draw(painter, QPointF(inset, inset), m_symbol, Theme::colour(Colour::accentText), symbol);
}

}  // namespace kestrune
