#include "ui/QtUpdatePresenter.h"

#include <QMetaObject>
#include <utility>

#include "ui/UiText.h"
#include "workspace/ReadableText.h"

namespace kestrune {

namespace {

const QString updateSymbol = QStringLiteral("arrow.down.circle");

// A version is one line of the feed's; whatever it holds, it shows.
QString versionOf(const UpdateItem& item) {
    return QString::fromStdString(ReadableText::name(item.displayVersion));
}

}  // namespace

QtUpdatePresenter::QtUpdatePresenter(std::function<void()> prepare) : m_prepare(std::move(prepare)) {
}

QtUpdatePresenter::~QtUpdatePresenter() = default;

void QtUpdatePresenter::showChecking(std::function<void()> cancel) {
    show({.symbol = updateSymbol,
          .title = translated("Checking for updates…"),
          .hasBar = true,
          .secondary = translated("Cancel")},
         {.secondary = std::move(cancel)});
    m_window->present();
}

void QtUpdatePresenter::showUpdate(const UpdateItem& item, const std::string& runningVersion,
                                   std::function<void(UpdateChoice)> answer) {
    const auto choosing = [answer = std::move(answer)](UpdateChoice choice) {
        return [answer, choice] { answer(choice); };
    };
    show({.symbol = updateSymbol,
          .title = translated("Kestrune %1 is available", {versionOf(item)}),
          .text = translated("You are using version %1. Install replaces it with the new one.",
                             {QString::fromStdString(ReadableText::name(runningVersion))}),
          .notes = item.notes,
          .primary = translated("Install"),
          .secondary = translated("Remind Me Later"),
          .quiet = translated("Skip This Version")},
         {choosing(UpdateChoice::install), choosing(UpdateChoice::dismiss), choosing(UpdateChoice::skip), false});
    m_window->present();
}

void QtUpdatePresenter::showDownload(const UpdateItem& item, std::function<void()> cancel) {
    show({.symbol = updateSymbol,
          .title = translated("Downloading Kestrune %1", {versionOf(item)}),
          .hasBar = true,
          .secondary = translated("Cancel")},
         {.secondary = std::move(cancel)});
    m_window->setDownloaded(0, item.archiveBytes);
    m_window->show();
}

void QtUpdatePresenter::setDownloaded(std::int64_t bytes, std::int64_t total) {
    if (m_window) {
        m_window->setDownloaded(bytes, total);
    }
}

void QtUpdatePresenter::showInstalling(const UpdateItem& item) {
    show({.symbol = updateSymbol,
          .title = translated("Installing Kestrune %1", {versionOf(item)}),
          .text = translated("This takes a moment and can't be stopped."),
          .hasBar = true},
         {});
    m_window->show();
}

void QtUpdatePresenter::showOutcome(const std::string& title, const std::string& text) {
    show({.symbol = QStringLiteral("info.circle"),
          .title = shown(title),
          .text = shown(text),
          .primary = translated("OK")},
         {});
    m_window->present();
}

void QtUpdatePresenter::showReadyToRelaunch(const UpdateItem& item, std::function<void()> relaunch) {
    show({.symbol = QStringLiteral("arrow.clockwise"),
          .title = translated("Kestrune %1 is installed", {versionOf(item)}),
          .text = translated("Restart Kestrune to use it, or go on and have it from the next start."),
          .primary = translated("Restart Now"),
          .secondary = translated("Later")},
         {.primary = std::move(relaunch)});
    m_window->present();
}

void QtUpdatePresenter::bringToFront() {
    if (window() != nullptr) {
        m_window->present();
    }
}

void QtUpdatePresenter::close() {
    ++m_state;
    m_answers = {};
    if (m_window) {
        m_window->hide();
    }
}

UpdateWindow* QtUpdatePresenter::window() const {
    return m_window && m_window->isVisible() ? m_window.get() : nullptr;
}

void QtUpdatePresenter::makeWindow() {
    m_prepare();
    m_window = std::make_unique<UpdateWindow>();
    QObject::connect(m_window.get(), &UpdateWindow::answered, m_window.get(),
                     [this](UpdateWindow::Answer answer) { take(answer); });
}

void QtUpdatePresenter::take(UpdateWindow::Answer answer) {
    if (std::exchange(m_isAnswered, true)) {
        return;
    }
    const Answers answers = std::exchange(m_answers, {});
    const bool isPrimary = answer == UpdateWindow::Answer::primary;
    const auto& other = answer == UpdateWindow::Answer::quiet ? answers.quiet : answers.secondary;
    const auto& call = isPrimary ? answers.primary : other;
    if (!isPrimary || answers.primaryCloses) {
        m_window->hide();
    }
    // From the event loop, where the answer may well show the next state or end the program; a state that came in
    // between has taken this one's place.
    QMetaObject::invokeMethod(
        m_window.get(),
        [this, call, state = m_state] {
            if (call && state == m_state) {
                call();
            }
        },
        Qt::QueuedConnection);
}

void QtUpdatePresenter::show(const UpdateContent& content, Answers answers) {
    if (!m_window) {
        makeWindow();
    }
    ++m_state;
    m_isAnswered = false;
    m_answers = std::move(answers);
    m_window->setContent(content);
}

}  // namespace kestrune
