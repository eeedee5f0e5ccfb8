#include "platform/linux/StatusNotifierItem.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QImage>
#include <QList>
#include <QtEndian>

#include <utility>

#include "platform/linux/TrayIcon.h"

namespace kestrune {

/// A picture as D-Bus carries it: (iiay), ARGB32 in network byte order.
struct TrayPixmap {
    int width = 0;
    int height = 0;
    QByteArray bytes;
};

/// The ToolTip property: (sa(iiay)ss).
struct TrayToolTip {
    QString title;
};

static QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

static const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

static QDBusArgument& operator<<(QDBusArgument& argument, const TrayToolTip& toolTip) {
    argument.beginStructure();
    argument << QString() << QList<TrayPixmap>() << toolTip.title << QString();
    argument.endStructure();
    return argument;
}

static const QDBusArgument& operator>>(const QDBusArgument& argument, TrayToolTip& toolTip) {
    QString ignored;
    QList<TrayPixmap> pixmaps;
    argument.beginStructure();
    argument >> ignored >> pixmaps >> toolTip.title >> ignored;
    argument.endStructure();
    return argument;
}

}  // namespace kestrune

Q_DECLARE_METATYPE(kestrune::TrayPixmap)
Q_DECLARE_METATYPE(kestrune::TrayToolTip)

namespace kestrune {

namespace {

const QString kdeInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString freedesktopInterface = QStringLiteral("org.freedesktop.StatusNotifierItem");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

TrayPixmap pixmap(const QImage& picture) {
    const QImage image = picture.convertToFormat(QImage::Format_ARGB32);
    TrayPixmap result{image.width(), image.height(), {}};
    result.bytes.reserve(image.width() * image.height() * 4);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const auto pixel = qToBigEndian<quint32>(image.pixel(x, y));
            result.bytes.append(reinterpret_cast<const char*>(&pixel), sizeof pixel);
        }
    }
    return result;
}

QList<TrayPixmap> pixmaps(const TrayTexts& texts) {
    QList<TrayPixmap> result;
    for (const int size : trayIconSizes) {
        result.append(pixmap(trayIcon(size, texts.percent, texts.updateAvailable)));
    }
    return result;
}

QString introspection(const QString& interface) {
    return QStringLiteral(R"xml(<interface name="%1">
<property name="Category" type="s" access="read"/><property name="Id" type="s" access="read"/>
<property name="Title" type="s" access="read"/><property name="Status" type="s" access="read"/>
<property name="WindowId" type="i" access="read"/><property name="IconName" type="s" access="read"/>
<property name="IconPixmap" type="a(iiay)" access="read"/><property name="OverlayIconName" type="s" access="read"/>
<property name="AttentionIconName" type="s" access="read"/><property name="IconThemePath" type="s" access="read"/>
<property name="ToolTip" type="(sa(iiay)ss)" access="read"/><property name="ItemIsMenu" type="b" access="read"/>
<property name="Menu" type="o" access="read"/><property name="XAyatanaLabel" type="s" access="read"/>
<property name="XAyatanaLabelGuide" type="s" access="read"/>
<method name="ContextMenu"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="Activate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="SecondaryActivate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="Scroll"><arg name="delta" type="i" direction="in"/><arg name="orientation" type="s" direction="in"/></method>
<signal name="NewTitle"/><signal name="NewIcon"/><signal name="NewToolTip"/>
<signal name="XAyatanaNewLabel"><arg name="label" type="s"/><arg name="guide" type="s"/></signal>
</interface>
)xml")
        .arg(interface);
}

}  // namespace

const QString StatusNotifierItem::path = QStringLiteral("/StatusNotifierItem");

StatusNotifierItem::StatusNotifierItem(QDBusConnection connection, QString menuPath, bool menuOnly, Handlers handlers)
    : m_connection(std::move(connection)),
      m_menuPath(std::move(menuPath)),
      m_menuOnly(menuOnly),
      m_handlers(std::move(handlers)) {
    qDBusRegisterMetaType<TrayPixmap>();
    qDBusRegisterMetaType<QList<TrayPixmap>>();
    qDBusRegisterMetaType<TrayToolTip>();
    m_connection.registerVirtualObject(path, this);
}

StatusNotifierItem::~StatusNotifierItem() {
    m_connection.unregisterObject(path);
}

void StatusNotifierItem::setTexts(const TrayTexts& texts) {
    const TrayTexts old = std::exchange(m_texts, texts);
    if (old.percent != texts.percent || old.updateAvailable != texts.updateAvailable) {
        m_pictures.clear();
        emitSignal(QStringLiteral("NewIcon"));
    }
    if (old.title != texts.title) {
        emitSignal(QStringLiteral("NewTitle"));
    }
    if (old.tooltip != texts.tooltip) {
        emitSignal(QStringLiteral("NewToolTip"));
    }
    if (old.label != texts.label) {
        emitSignal(QStringLiteral("XAyatanaNewLabel"),
                   {property(QStringLiteral("XAyatanaLabel")), property(QStringLiteral("XAyatanaLabelGuide"))});
    }
}

QVariant StatusNotifierItem::property(const QString& name) const {
    if (name == QLatin1String("IconPixmap")) {
        if (!m_pictures.isValid()) {
            m_pictures = QVariant::fromValue(pixmaps(m_texts));
        }
        return m_pictures;
    }
    const QVariantMap others{
        {QStringLiteral("Category"), QStringLiteral("SystemServices")},
        {QStringLiteral("Id"), QStringLiteral("kestrune")},
        {QStringLiteral("Title"), m_texts.title},
        {QStringLiteral("Status"), QStringLiteral("Active")},
        {QStringLiteral("WindowId"), 0},
        {QStringLiteral("IconName"), QString()},
        {QStringLiteral("OverlayIconName"), QString()},
        {QStringLiteral("AttentionIconName"), QString()},
        {QStringLiteral("IconThemePath"), QString()},
        {QStringLiteral("ToolTip"), QVariant::fromValue(TrayToolTip{m_texts.tooltip})},
        {QStringLiteral("ItemIsMenu"), m_menuOnly},
        {QStringLiteral("Menu"), QVariant::fromValue(QDBusObjectPath(m_menuPath))},
        {QStringLiteral("XAyatanaLabel"), m_texts.label},
        {QStringLiteral("XAyatanaLabelGuide"), QStringLiteral("100%")},
    };
    if (name.isEmpty()) {
        return others;
    }
    return others.value(name);
}

QVariantMap StatusNotifierItem::properties() const {
    QVariantMap all = property(QString()).toMap();
    all.insert(QStringLiteral("IconPixmap"), property(QStringLiteral("IconPixmap")));
    return all;
}

QString StatusNotifierItem::introspect(const QString& objectPath) const {
    Q_UNUSED(objectPath);
    return introspection(kdeInterface) + introspection(freedesktopInterface);
}

bool StatusNotifierItem::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    const QString interface = message.interface();
    if (interface == propertiesInterface) {
        return handleProperties(message, connection);
    }
    if (!interface.isEmpty() && interface != kdeInterface && interface != freedesktopInterface) {
        return false;
    }
    const QString member = message.member();
    if (member == QLatin1String("Activate") || member == QLatin1String("ContextMenu")) {
        QMetaObject::invokeMethod(
            this, [this] { m_handlers.activate(); }, Qt::QueuedConnection);
    } else if (member == QLatin1String("SecondaryActivate")) {
        QMetaObject::invokeMethod(
            this, [this] { m_handlers.secondaryActivate(); }, Qt::QueuedConnection);
    } else if (member != QLatin1String("Scroll") && member != QLatin1String("ProvideXdgActivationToken")) {
        return false;
    }
    return connection.send(message.createReply());
}

bool StatusNotifierItem::handleProperties(const QDBusMessage& message, const QDBusConnection& connection) const {
    const QVariantList arguments = message.arguments();
    if (message.member() == QLatin1String("GetAll")) {
        return connection.send(message.createReply(properties()));
    }
    if (message.member() != QLatin1String("Get") || arguments.size() != 2) {
        return false;
    }
    const QString name = arguments.at(1).toString();
    const QVariant value = name.isEmpty() ? QVariant() : property(name);
    if (!value.isValid()) {
        return connection.send(message.createErrorReply(QDBusError::UnknownProperty, name));
    }
    return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
}

void StatusNotifierItem::emitSignal(const QString& name, const QVariantList& arguments) const {
    QDBusMessage message = QDBusMessage::createSignal(path, kdeInterface, name);
    message.setArguments(arguments);
    m_connection.send(message);
}

}  // namespace kestrune
