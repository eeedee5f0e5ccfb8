#include "ui/TreemapAccessible.h"

#include <QAccessibleWidget>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "ui/TreemapView.h"

namespace kestrune::TreemapAccessible {

namespace {

/// One tile, by its item: the tile may move, and be another one's neighbour, while a screen reader holds it.
class AccessibleTile final : public QAccessibleInterface,
                             public QAccessibleActionInterface,
                             public QAccessibleValueInterface {
public:
    AccessibleTile(QAccessibleInterface& parent, TreemapView& view, std::string path)
        : m_parent(parent), m_view(view), m_path(std::move(path)) {}

    [[nodiscard]] bool isValid() const override { return index().has_value(); }

    [[nodiscard]] QObject* object() const override { return nullptr; }

    [[nodiscard]] QWindow* window() const override { return m_parent.window(); }

    [[nodiscard]] QAccessibleInterface* parent() const override { return &m_parent; }

    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }

    [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }

    [[nodiscard]] int childCount() const override { return 0; }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        const auto at = index();
        if (!at) {
            return {};
        }
        switch (kind) {
            case QAccessible::Name:
                return QStringLiteral("%1, %2").arg(m_view.nameOf(*at), m_view.figuresOf(*at));
            case QAccessible::Value:
                return m_view.figuresOf(*at);
            default:
                return {};
        }
    }

    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}

    [[nodiscard]] QRect rect() const override {
        const auto at = index();
        if (!at) {
            return {};
        }
        const QRect box = m_view.tileRect(*at);
        return {m_view.mapToGlobal(box.topLeft()), box.size()};
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        const auto at = index();
        state.invisible = !at || !m_view.isVisible();
        state.focusable = true;
        state.selectable = true;
        state.focused = at && m_view.hasFocus() && m_view.currentIndex() == at;
        state.selected = at && m_view.selectedIndex() == at;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        switch (type) {
            case QAccessible::ActionInterface:
                return static_cast<QAccessibleActionInterface*>(this);
            case QAccessible::ValueInterface:
                return static_cast<QAccessibleValueInterface*>(this);
            default:
                return nullptr;
        }
    }

    [[nodiscard]] QStringList actionNames() const override {
        const auto at = index();
        QStringList names;
        if (at && m_view.isExplorable(*at)) {
            names.append(pressAction());
        }
        names.append(setFocusAction());
        return names;
    }

    void doAction(const QString& name) override {
        const auto at = index();
        if (at && name == pressAction()) {
            m_view.explore(*at);
        } else if (at && name == setFocusAction()) {
            m_view.setCurrent(*at);
            m_view.setFocus(Qt::OtherFocusReason);
        }
    }

    [[nodiscard]] QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

    // What the tile takes of the folder, in percent.
    [[nodiscard]] QVariant currentValue() const override {
        const auto at = index();
        return at ? std::round(m_view.tiles()[*at].share * 1000) / 10 : 0.0;
    }

    void setCurrentValue(const QVariant& /*value*/) override {}

    [[nodiscard]] QVariant maximumValue() const override { return 100.0; }

    [[nodiscard]] QVariant minimumValue() const override { return 0.0; }

    [[nodiscard]] QVariant minimumStepSize() const override { return 0.0; }

    [[nodiscard]] std::optional<std::size_t> index() const { return m_view.indexOf(m_path); }

private:
    QAccessibleInterface& m_parent;
    TreemapView& m_view;
    std::string m_path;
};

class AccessibleTreemap final : public QAccessibleWidget {
public:
    explicit AccessibleTreemap(TreemapView& view) : QAccessibleWidget(&view, QAccessible::List), m_view(view) {}

    AccessibleTreemap(const AccessibleTreemap&) = delete;
    AccessibleTreemap& operator=(const AccessibleTreemap&) = delete;

    [[nodiscard]] int childCount() const override { return static_cast<int>(m_view.tiles().size()); }

    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        forgetGone();
        const std::string& path = m_view.tiles()[static_cast<std::size_t>(index)].path;
        auto known = m_tiles.find(path);
        if (known == m_tiles.end()) {
            // Qt owns what is registered.
            auto* made = new AccessibleTile(const_cast<AccessibleTreemap&>(*this), m_view, path);
            known = m_tiles.emplace(path, QAccessible::registerAccessibleInterface(made)).first;
        }
        return QAccessible::accessibleInterface(known->second);
    }

    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const auto at = m_view.indexAt(m_view.mapFromGlobal(QPoint(x, y)));
        return at ? child(static_cast<int>(*at)) : nullptr;
    }

    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        const auto at = m_view.hasFocus() ? m_view.currentIndex() : std::nullopt;
        return at ? child(static_cast<int>(*at)) : nullptr;
    }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        for (const auto& [path, id] : m_tiles) {
            if (QAccessible::accessibleInterface(id) == child) {
                const auto at = m_view.indexOf(path);
                return at ? static_cast<int>(*at) : -1;
            }
        }
        return -1;
    }

protected:
    ~AccessibleTreemap() override {
        for (const auto& [path, id] : m_tiles) {
            QAccessible::deleteAccessibleInterface(id);
        }
    }

private:
    void forgetGone() const {
        for (auto known = m_tiles.begin(); known != m_tiles.end();) {
            if (m_view.indexOf(known->first)) {
                ++known;
            } else {
                QAccessible::deleteAccessibleInterface(known->second);
                known = m_tiles.erase(known);
            }
        }
    }

    TreemapView& m_view;
    mutable std::map<std::string, QAccessible::Id> m_tiles;
};

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
    if (className == QLatin1String("kestrune::TreemapView")) {
        return new AccessibleTreemap(*static_cast<TreemapView*>(object));
    }
    return nullptr;
}

}  // namespace

void install() {
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    static_cast<void>(installed);
}

}  // namespace kestrune::TreemapAccessible
