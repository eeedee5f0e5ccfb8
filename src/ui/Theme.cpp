#include "ui/Theme.h"

#include <QApplication>
#include <QPalette>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace kestrune::Theme {

namespace {

struct Pair {
    Colour role;
    QRgb light;
    QRgb dark;
};

constexpr std::array<Pair, 28> table{{
    {Colour::window, 0xFFFAFAFB, 0xFF1C1D20},      {Colour::sidebar, 0xFFF0F1F3, 0xFF17181A},
    {Colour::sideHover, 0xFFE7E8EC, 0xFF222427},   {Colour::sideSelected, 0xFFDFE1E6, 0xFF2F3238},
    {Colour::card, 0xFFFFFFFF, 0xFF25272B},        {Colour::cardHover, 0xFFF4F5F7, 0xFF2D2F34},
    {Colour::control, 0xFFE9EAED, 0xFF35383E},     {Colour::controlHover, 0xFFDFE1E5, 0xFF3E4148},
    {Colour::text1, 0xFF1B1C1F, 0xFFF1F2F4},       {Colour::text2, 0xFF50545B, 0xFFB8BCC4},
    {Colour::text3, 0xFF666B73, 0xFF9BA0A9},       {Colour::separator, 0xFFE4E5E9, 0xFF34363C},
    {Colour::border, 0xFF80858E, 0xFF7F848E},      {Colour::accent, 0xFF2463D6, 0xFF3570DE},
    {Colour::accentHover, 0xFF1D55BD, 0xFF2E68D2}, {Colour::accentText, 0xFF2463D6, 0xFF8AB4FF},
    {Colour::onAccent, 0xFFFFFFFF, 0xFFFFFFFF},    {Colour::tint, 0xFFE8EFFC, 0xFF26354F},
    {Colour::success, 0xFF1C7742, 0xFF5CC98A},     {Colour::successTint, 0xFFE6F4EB, 0xFF1F3529},
    {Colour::warning, 0xFF8A5A00, 0xFFE8B04A},     {Colour::warningTint, 0xFFFBF1DC, 0xFF3A301C},
    {Colour::danger, 0xFFC0322B, 0xFFFF8A80},      {Colour::dangerTint, 0xFFFCEBEA, 0xFF42272A},
    {Colour::track, 0xFFE4E5E9, 0xFF3A3D43},       {Colour::chartLine, 0xFF2463D6, 0xFF8AB4FF},
    {Colour::chartFill, 0xFFE4ECFB, 0xFF2A374F},   {Colour::chartLine2, 0xFF8A93A3, 0xFF7F848E},
}};

struct RankPair {
    QRgb fill;
    QRgb strong;
};

struct Rank {
    RankPair light;
    RankPair dark;
};

// By place; the last one is of all places that follow.
constexpr std::array<Rank, 9> ranks{{
    {{0xFFB6D3EB, 0xFF6492B8}, {0xFF1E4F7C, 0xFF3F83C4}},  // blue
    {{0xFFDEBB91, 0xFFB48446}, {0xFF865022, 0xFFB76C2A}},  // amber
    {{0xFF7FBA9C, 0xFF449D75}, {0xFF266C56, 0xFF209071}},  // green
    {{0xFFDEA1B9, 0xFFC57596}, {0xFF64435A, 0xFFA46D94}},  // rose
    {{0xFFDEDBAE, 0xFF938F4A}, {0xFF7D702E, 0xFF917E13}},  // olive
    {{0xFFB4A1D2, 0xFF9C80C4}, {0xFF67588E, 0xFF8972BF}},  // violet
    {{0xFF7DC7D8, 0xFF189AB2}, {0xFF487888, 0xFF3589A1}},  // teal
    {{0xFFEFC6C6, 0xFFBA7D7D}, {0xFF71351E, 0xFFBF6747}},  // clay
    {{0xFFDCDEE3, 0xFF858B95}, {0xFF3A3D43, 0xFF7A7F8A}},  // rest
}};

constexpr QRgb inkOnLight = 0xFF1B1C1F;

// What Qt itself falls back to where no desktop names a highlight.
constexpr QRgb toolkitHighlight = 0xFF308CC6;

struct State {
    bool started = false;
    bool dark = false;
    std::optional<QColor> highlight;
    std::array<QColor, table.size()> colours;
};

State& state() {
    static State instance;
    return instance;
}

RankPair rankColours(int rank) {
    const auto last = static_cast<int>(ranks.size()) - 1;
    const Rank& row = ranks[static_cast<std::size_t>(rank < 0 ? last : std::min(rank, last))];
    return state().dark ? row.dark : row.light;
}

QColor fixed(Colour role, bool dark) {
    const Pair& pair = table[static_cast<std::size_t>(role)];
    return QColor::fromRgb(dark ? pair.dark : pair.light);
}

QColor blend(const QColor& over, const QColor& under, double share) {
    const auto mix = [share](int one, int other) {
        return static_cast<int>(std::lround(one * share + other * (1 - share)));
    };
    return {mix(over.red(), under.red()), mix(over.green(), under.green()), mix(over.blue(), under.blue())};
}

double luminance(const QColor& colour) {
    const auto linear = [](double value) {
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

QColor withLightness(const QColor& colour, double lightness) {
    return QColor::fromHslF(std::max(0.0F, colour.hslHueF()), colour.hslSaturationF(), static_cast<float>(lightness));
}

// The nearest lightness, going one way, at which colour reaches 4.5:1 on every ground.
QColor readable(const QColor& colour, std::initializer_list<QColor> grounds, bool lighter) {
    const auto from = static_cast<double>(colour.lightnessF());
    for (int step = 0; step <= 100; ++step) {
        const double lightness = std::clamp(from + (lighter ? step : -step) / 100.0, 0.0, 1.0);
        const QColor candidate = step == 0 ? colour : withLightness(colour, lightness);
        if (std::all_of(grounds.begin(), grounds.end(),
                        [&](const QColor& ground) { return contrast(candidate, ground) >= 4.5; })) {
            return candidate;
        }
    }
    return lighter ? QColor(Qt::white) : QColor(Qt::black);
}

void applyPalette() {
    QPalette palette = QApplication::palette();
    const auto set = [&palette](QPalette::ColorRole role, Colour name) { palette.setColor(role, colour(name)); };
    set(QPalette::Window, Colour::window);
    set(QPalette::WindowText, Colour::text1);
    set(QPalette::Base, Colour::card);
    set(QPalette::AlternateBase, Colour::cardHover);
    set(QPalette::Text, Colour::text1);
    set(QPalette::PlaceholderText, Colour::text3);
    set(QPalette::Button, Colour::control);
    set(QPalette::ButtonText, Colour::text1);
    set(QPalette::Highlight, Colour::accent);
    set(QPalette::HighlightedText, Colour::onAccent);
    set(QPalette::Link, Colour::accentText);
    set(QPalette::ToolTipBase, Colour::card);
    set(QPalette::ToolTipText, Colour::text1);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, colour(Colour::text3));
    }
    // Styles draw a light copy beneath disabled menu text, which has to vanish in the menu's ground.
    palette.setColor(QPalette::Disabled, QPalette::Light, colour(Colour::card));
    QApplication::setPalette(palette);
}

void fill() {
    State& now = state();
    for (const Pair& pair : table) {
        now.colours[static_cast<std::size_t>(pair.role)] = fixed(pair.role, now.dark);
    }
    if (now.highlight) {
        const Accent accent = accentFrom(*now.highlight, now.dark);
        const auto set = [&now](Colour role, const QColor& value) {
            now.colours[static_cast<std::size_t>(role)] = value;
        };
        set(Colour::accent, accent.fill);
        set(Colour::accentHover, accent.hover);
        set(Colour::accentText, accent.text);
        set(Colour::onAccent, accent.onFill);
        set(Colour::tint, accent.tint);
        set(Colour::chartLine, accent.text);
        set(Colour::chartFill, accent.tint);
    }
    applyPalette();
}

}  // namespace

void start() {
    State& now = state();
    if (now.started) {
        return;
    }
    now.started = true;
    const QPalette palette = QApplication::palette();
    now.dark = palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    const QColor highlight = palette.color(QPalette::Active, QPalette::Highlight);
    if (highlight.rgb() != toolkitHighlight && highlight.hslSaturation() > 20) {
        now.highlight = highlight;
    }
    fill();
}

void setDark(bool dark) {
    start();
    if (state().dark != dark) {
        state().dark = dark;
        fill();
    }
}

bool isDark() {
    return state().dark;
}

QColor colour(Colour role) {
    return state().colours[static_cast<std::size_t>(role)];
}

QColor rankFill(int rank) {
    return QColor::fromRgb(rankColours(rank).fill);
}

QColor rankStrong(int rank) {
    return QColor::fromRgb(rankColours(rank).strong);
}

QColor rankInk() {
    return state().dark ? QColor(Qt::white) : QColor::fromRgb(inkOnLight);
}

double contrast(const QColor& one, const QColor& other) {
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

Accent accentFrom(const QColor& highlight, bool dark) {
    const QColor white(Qt::white);
    const QColor ink = QColor::fromRgb(inkOnLight);
    const bool onWhite = contrast(highlight, white) >= contrast(highlight, ink);
    Accent result;
    result.onFill = onWhite ? white : ink;
    result.fill = readable(highlight, {result.onFill}, !onWhite);
    result.hover = blend(QColor(Qt::black), result.fill, 0.06);
    result.text = readable(highlight, {fixed(Colour::card, dark), fixed(Colour::window, dark)}, dark);
    result.tint = blend(result.fill, fixed(Colour::card, dark), dark ? 0.25 : 0.12);
    return result;
}

}  // namespace kestrune::Theme
