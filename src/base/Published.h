#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace kestrune {

/// Keeps one observer connected for as long as it lives. Main thread only.
class [[nodiscard]] Subscription final {
public:
    Subscription() = default;

    explicit Subscription(std::shared_ptr<void> connection) : m_connection(std::move(connection)) {}

private:
    std::shared_ptr<void> m_connection;
};

/// Tells its observers that something happened. Main thread only. An observer may connect, disconnect or emit while
/// it is being told; one disconnected meanwhile is not told any more.
class Signal final {
public:
    using Observer = std::function<void()>;

    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    Subscription connect(Observer observer) {
        auto connection = std::make_shared<Observer>(std::move(observer));
        std::erase_if(m_observers, [](const auto& known) { return known.expired(); });
        m_observers.push_back(connection);
        return Subscription(std::move(connection));
    }

    void emit() const {
        const auto observers = m_observers;
        for (const auto& known : observers) {
            if (const auto observer = known.lock()) {
                (*observer)();
            }
        }
    }

private:
    std::vector<std::weak_ptr<Observer>> m_observers;
};

/// A value that views observe: read and set on the main thread only. Setting an equal value tells nobody.
template <typename T>
class Published final {
public:
    Published() = default;

    explicit Published(T initial) : m_value(std::move(initial)) {}

    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    [[nodiscard]] const T& get() const { return m_value; }

    void set(T value) {
        if (m_value == value) {
            return;
        }
        m_value = std::move(value);
        m_changed.emit();
    }

    /// Calls observer after every change until the subscription goes away.
    Subscription observe(Signal::Observer observer) { return m_changed.connect(std::move(observer)); }

private:
    T m_value{};
    Signal m_changed;
};

}  // namespace kestrune
