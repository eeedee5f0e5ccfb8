#include "platform/linux/DBusMenu.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>

#include <utility>

#include "platform/linux/DBusMenuTypes.h"

namespace kestrune {

namespace {

const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

// Numbers of the items: place + 1 in the menu itself; in the submenu of item n, n × submenuFactor + place + 1.
constexpr int submenuFactor = 100;

int childId(int parentId, std::size_t place) {
    return parentId * submenuFactor + static_cast<int>(place) + 1;
}

/// An underscore marks the next letter as the access key unless it is doubled.
QString label(const std::string& title) {
    return QString::fromStdString(title).replace(QLatin1Char('_'), QLatin1String("__"));
}

/// Keys carry the names that GTK gives them.
QString keyName(const std::string& key) {
    return key == "," ? QStringLiteral("comma") : QString::fromStdString(key).toUpper();
}

QVariantMap filtered(QVariantMap properties, const QStringList& names) {
    if (!names.isEmpty()) {
        properties.removeIf([&](const auto& property) { return !names.contains(property.key()); });
    }
    return properties;
}

DBusMenuLayout layoutOf(int id, const MenuItem& item, int depth, const QStringList& names) {
    DBusMenuLayout layout{id, filtered(DBusMenu::properties(item), names), {}};
    for (std::size_t place = 0; depth != 0 && place < item.submenu.size(); ++place) {
        layout.children.append(layoutOf(childId(id, place), item.submenu[place], depth - 1, names));
    }
    return layout;
}

void collectIds(int id, const MenuItem& item, QList<int>& ids) {
    ids.append(id);
    for (std::size_t place = 0; place < item.submenu.size(); ++place) {
        collectIds(childId(id, place), item.submenu[place], ids);
    }
}

/// The menu itself, as the item whose submenu it is.
MenuItem root(const std::vector<MenuItem>& items) {
    MenuItem item;
    item.submenu = items;
    return item;
}

QVariantMap menuProperties() {
    return {
        {QStringLiteral("Version"), 3U},
        {QStringLiteral("TextDirection"), QStringLiteral("ltr")},
        {QStringLiteral("Status"), QStringLiteral("normal")},
        {QStringLiteral("IconThemePath"), QStringList()},
    };
}

}  // namespace

const QString DBusMenu::path = QStringLiteral("/MenuBar");

DBusMenu::DBusMenu(QDBusConnection connection, std::vector<MenuItem> items, Handlers handlers)
    : m_connection(std::move(connection)), m_items(std::move(items)), m_handlers(std::move(handlers)) {
    registerDBusMenuTypes();
    m_connection.registerVirtualObject(path, this);
}

DBusMenu::~DBusMenu() {
    m_connection.unregisterObject(path);
}

QVariantMap DBusMenu::properties(const MenuItem& item) {
    if (item.separator) {
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    }
    QVariantMap result{
        {QStringLiteral("label"), label(item.title)},
        {QStringLiteral("enabled"), item.enabled},
        {QStringLiteral("visible"), !item.hidden},
    };
    if (item.checked) {
        result.insert(QStringLiteral("toggle-type"), QStringLiteral("checkmark"));
        result.insert(QStringLiteral("toggle-state"), *item.checked ? 1 : 0);
    }
    if (!item.key.empty()) {
        const QList<QStringList> shortcut{{QStringLiteral("Control"), keyName(item.key)}};
        result.insert(QStringLiteral("shortcut"), QVariant::fromValue(shortcut));
    }
    if (!item.submenu.empty()) {
        result.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
    }
    return result;
}

void DBusMenu::setItems(const std::vector<MenuItem>& items) {
    const std::vector<MenuItem> old = std::exchange(m_items, items);
    QList<DBusMenuItem> updated;
    for (std::size_t place = 0; place < items.size() && place < old.size(); ++place) {
        if (items[place] == old[place]) {
            continue;
        }
        QVariantMap changed = properties(items[place]);
        const QVariantMap before = properties(old[place]);
        changed.removeIf([&](const auto& property) { return before.value(property.key()) == property.value(); });
        if (!changed.isEmpty()) {
            updated.append({childId(0, place), changed});
        }
    }
    if (updated.isEmpty()) {
        return;
    }
    ++m_revision;
    QDBusMessage signal = QDBusMessage::createSignal(path, menuInterface, QStringLiteral("ItemsPropertiesUpdated"));
    signal << QVariant::fromValue(updated) << QVariant::fromValue(QList<DBusMenuItemKeys>());
    m_connection.send(signal);
}

const MenuItem* DBusMenu::item(int id) const {
    const int parent = id / submenuFactor;
    const auto place = static_cast<std::size_t>(id % submenuFactor);
    if (id <= 0 || place == 0) {
        return nullptr;
    }
    if (parent == 0) {
        return place <= m_items.size() ? &m_items[place - 1] : nullptr;
    }
    const MenuItem* above = item(parent);
    return above && place <= above->submenu.size() ? &above->submenu[place - 1] : nullptr;
}

QString DBusMenu::introspect(const QString& objectPath) const {
    Q_UNUSED(objectPath);
    return QStringLiteral(R"xml(<interface name="com.canonical.dbusmenu">
<property name="Version" type="u" access="read"/><property name="TextDirection" type="s" access="read"/>
<property name="Status" type="s" access="read"/><property name="IconThemePath" type="as" access="read"/>
<method name="GetLayout"><arg name="parentId" type="i" direction="in"/><arg name="recursionDepth" type="i" direction="in"/>
<arg name="propertyNames" type="as" direction="in"/><arg name="revision" type="u" direction="out"/>
<arg name="layout" type="(ia{sv}av)" direction="out"/></method>
<method name="GetGroupProperties"><arg name="ids" type="ai" direction="in"/>
<arg name="propertyNames" type="as" direction="in"/><arg name="properties" type="a(ia{sv})" direction="out"/></method>
<method name="GetProperty"><arg name="id" type="i" direction="in"/><arg name="name" type="s" direction="in"/>
<arg name="value" type="v" direction="out"/></method>
<method name="Event"><arg name="id" type="i" direction="in"/><arg name="eventId" type="s" direction="in"/>
<arg name="data" type="v" direction="in"/><arg name="timestamp" type="u" direction="in"/></method>
<method name="EventGroup"><arg name="events" type="a(isvu)" direction="in"/>
<arg name="idErrors" type="ai" direction="out"/></method>
<method name="AboutToShow"><arg name="id" type="i" direction="in"/><arg name="needUpdate" type="b" direction="out"/></method>
<method name="AboutToShowGroup"><arg name="ids" type="ai" direction="in"/>
<arg name="updatesNeeded" type="ai" direction="out"/><arg name="idErrors" type="ai" direction="out"/></method>
<signal name="ItemsPropertiesUpdated"><arg name="updatedProps" type="a(ia{sv})"/>
<arg name="removedProps" type="a(ias)"/></signal>
<signal name="LayoutUpdated"><arg name="revision" type="u"/><arg name="parent" type="i"/></signal>
</interface>
)xml");
}

bool DBusMenu::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    const QDBusMessage reply = message.interface() == propertiesInterface ? answerProperties(message) : answer(message);
    return reply.type() != QDBusMessage::InvalidMessage && connection.send(reply);
}

QDBusMessage DBusMenu::answer(const QDBusMessage& message) {
    const QString member = message.member();
    const QString signature = message.signature();
    if (member == QLatin1String("GetLayout") && signature == QLatin1String("iias")) {
        return layout(message);
    }
    if (member == QLatin1String("GetGroupProperties") && signature == QLatin1String("aias")) {
        return groupProperties(message);
    }
    if (member == QLatin1String("GetProperty") && signature == QLatin1String("is")) {
        return itemProperty(message);
    }
    if (member == QLatin1String("Event") && signature == QLatin1String("isvu")) {
        return handleEvent(message.arguments().at(0).toInt(), message.arguments().at(1).toString())
                   ? message.createReply()
                   : message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such menu item"));
    }
    if (member == QLatin1String("EventGroup") && signature == QLatin1String("a(isvu)")) {
        return eventGroup(message);
    }
    if (member == QLatin1String("AboutToShow") && signature == QLatin1String("i")) {
        return message.createReply(aboutToShow(message.arguments().at(0).toInt()));
    }
    if (member == QLatin1String("AboutToShowGroup") && signature == QLatin1String("ai")) {
        return aboutToShowGroup(message);
    }
    return {};
}

QDBusMessage DBusMenu::answerProperties(const QDBusMessage& message) const {
    if (message.member() == QLatin1String("GetAll")) {
        return message.createReply(menuProperties());
    }
    if (message.member() != QLatin1String("Get") || message.arguments().size() != 2) {
        return {};
    }
    const QString name = message.arguments().at(1).toString();
    const QVariant value = menuProperties().value(name);
    return value.isValid() ? message.createReply(QVariant::fromValue(QDBusVariant(value)))
                           : message.createErrorReply(QDBusError::UnknownProperty, name);
}

QDBusMessage DBusMenu::layout(const QDBusMessage& message) const {
    const QVariantList arguments = message.arguments();
    const int id = arguments.at(0).toInt();
    const int depth = arguments.at(1).toInt();
    const QStringList names = arguments.at(2).toStringList();
    if (id == 0) {
        DBusMenuLayout top = layoutOf(0, root(m_items), depth, names);
        top.properties = filtered({{QStringLiteral("children-display"), QStringLiteral("submenu")}}, names);
        return message.createReply({m_revision, QVariant::fromValue(top)});
    }
    const MenuItem* known = item(id);
    if (!known) {
        return message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such menu item"));
    }
    return message.createReply({m_revision, QVariant::fromValue(layoutOf(id, *known, depth, names))});
}

QDBusMessage DBusMenu::groupProperties(const QDBusMessage& message) const {
    auto ids = qdbus_cast<QList<int>>(message.arguments().at(0));
    const QStringList names = message.arguments().at(1).toStringList();
    if (ids.isEmpty()) {
        collectIds(0, root(m_items), ids);
    }
    QList<DBusMenuItem> result;
    for (const int id : std::as_const(ids)) {
        if (const MenuItem* known = item(id)) {
            result.append({id, filtered(properties(*known), names)});
        }
    }
    return message.createReply(QVariant::fromValue(result));
}

QDBusMessage DBusMenu::itemProperty(const QDBusMessage& message) const {
    const MenuItem* known = item(message.arguments().at(0).toInt());
    const QString name = message.arguments().at(1).toString();
    const QVariant value = known ? properties(*known).value(name) : QVariant();
    return value.isValid() ? message.createReply(QVariant::fromValue(QDBusVariant(value)))
                           : message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such property"));
}

bool DBusMenu::handleEvent(int id, const QString& type) {
    const MenuItem* known = item(id);
    if (!known) {
        return id == 0;
    }
    if (type == QLatin1String("clicked") && known->enabled && !known->hidden && known->action != MenuAction::none) {
        QMetaObject::invokeMethod(
            this, [this, action = known->action] { m_handlers.perform(action); }, Qt::QueuedConnection);
    }
    return true;
}

QDBusMessage DBusMenu::eventGroup(const QDBusMessage& message) {
    const auto events = qdbus_cast<QList<DBusMenuEvent>>(message.arguments().at(0));
    QList<int> unknown;
    for (const DBusMenuEvent& event : events) {
        if (!handleEvent(event.id, event.type)) {
            unknown.append(event.id);
        }
    }
    if (!events.isEmpty() && unknown.size() == events.size()) {
        return message.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No such menu items"));
    }
    return message.createReply(QVariant::fromValue(unknown));
}

bool DBusMenu::aboutToShow(int id) {
    if (id != 0) {
        return false;
    }
    const uint before = m_revision;
    m_handlers.menuWillOpen();
    return m_revision != before;
}

QDBusMessage DBusMenu::aboutToShowGroup(const QDBusMessage& message) {
    const auto ids = qdbus_cast<QList<int>>(message.arguments().at(0));
    QList<int> changed;
    QList<int> unknown;
    for (const int id : ids) {
        if (aboutToShow(id)) {
            changed.append(id);
        } else if (id != 0 && !item(id)) {
            unknown.append(id);
        }
    }
    return message.createReply({QVariant::fromValue(changed), QVariant::fromValue(unknown)});
}

}  // namespace kestrune
