#include "platform/linux/LinuxAppearance.h"

#include <QGuiApplication>
#include <QPalette>

#include <utility>

#include "platform/linux/PortalSettings.h"

namespace kestrune {

namespace {

const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString schemeKey = QStringLiteral("color-scheme");
const QString interfaceGroup = QStringLiteral("org.gnome.desktop.interface");
const QString animationsKey = QStringLiteral("enable-animations");

// 0 no preference, 1 dark, 2 light.
constexpr uint darkScheme = 1;

/// What the application's own palette says, until the desktop does.
bool hasDarkPalette() {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

}  // namespace

LinuxAppearance::LinuxAppearance() = default;

LinuxAppearance::~LinuxAppearance() = default;

void LinuxAppearance::start(Handler handler) {
    m_portal = std::make_unique<PortalSettings>(
        [handler = std::move(handler), settings = AppearanceSettings{.dark = hasDarkPalette()}](
            const QString& group, const QString& key, const QVariant& value) mutable {
            if (group == appearanceGroup && key == schemeKey) {
                settings.dark = value.toUInt() == darkScheme;
            } else if (group == interfaceGroup && key == animationsKey) {
                settings.reduceMotion = !value.toBool();
            } else {
                return;
            }
            handler(settings);
        });
    m_portal->listen();
    m_portal->read(appearanceGroup, schemeKey);
    m_portal->read(interfaceGroup, animationsKey);
}

}  // namespace kestrune
