#include "update/StandardUpdater.h"
#include "update/UpdateTexts.h"

namespace kestrune {

void StandardUpdater::install() {
    if (!m_parts.installer.archiveSuffix()) {
        enter(State::idle);
        const auto outcome = UpdateTexts::installYourself(*m_known);
        return m_parts.presenter.showOutcome(outcome.title, outcome.text);
    }
    return m_archive ? installArchive() : download();
}

void StandardUpdater::download() {
    enter(State::downloading);
    m_parts.presenter.showDownload(*m_known, inThisStay(&StandardUpdater::stopDownload));
    const auto progress = [this, stay = std::weak_ptr(m_stay)](std::int64_t bytes, std::int64_t total) {
        if (!stay.expired()) {
            m_parts.presenter.setDownloaded(bytes, total);
        }
    };
    m_stay->transfer = m_parts.fetcher.fetchArchive(m_parts.source, *m_known, progress,
                                                    answerInThisStay(&StandardUpdater::archiveArrived));
}

void StandardUpdater::stopDownload() {
    enter(State::idle);
    m_archive.reset();
    const UpdaterError error = UpdateTexts::downloadStopped(*m_known);
    if (tell([&](UpdaterDelegate& delegate) { delegate.didAbortWithError(error); })) {
        m_parts.presenter.close();
    }
}

void StandardUpdater::archiveArrived(const Archive& archive) {
    if (!archive.ok()) {
        return installationFailed(archive.error());
    }
    m_archive = archive.value();
    installArchive();
}

void StandardUpdater::installArchive() {
    // The delegate may show a modal alert: the event loop runs meanwhile, and the user may stop the download.
    const std::weak_ptr<Stay> stay = m_stay;
    const bool isAllowed = m_delegate->shouldInstallUpdate();
    if (stay.expired()) {
        return;
    }
    if (!isAllowed) {
        enter(State::asking);
        return showQuestion();
    }
    enter(State::installing);
    m_parts.presenter.showInstalling(*m_known);
    m_parts.installer.install(*m_archive, answerInThisStay(&StandardUpdater::installed));
}

void StandardUpdater::installed(const Installation& installation) {
    if (!installation.ok()) {
        return installationFailed(installation.error());
    }
    m_archive.reset();
    if (installation.value() == UpdateInstaller::Outcome::replaced) {
        enter(State::replaced);
        return showReadyToRelaunch();
    }
    enter(State::idle);
    const auto outcome = UpdateTexts::handedOver(*m_known);
    m_parts.presenter.showOutcome(outcome.title, outcome.text);
}

/// The next check starts from the feed again, which may tell of a better archive by then.
void StandardUpdater::installationFailed(const UpdaterError& error) {
    const auto outcome = UpdateTexts::installFailed(*m_known, error);
    enter(State::idle);
    m_archive.reset();
    m_known.reset();
    if (tell([&](UpdaterDelegate& delegate) { delegate.didAbortWithError(error); })) {
        m_parts.presenter.showOutcome(outcome.title, outcome.text);
    }
}

void StandardUpdater::showReadyToRelaunch() {
    m_parts.presenter.showReadyToRelaunch(*m_known, inThisStay(&StandardUpdater::relaunch));
}

void StandardUpdater::relaunch() {
    const std::weak_ptr<Stay> stay = m_stay;
    const bool isAllowed = m_delegate->shouldInstallUpdate();
    if (stay.expired()) {
        return;
    }
    return isAllowed ? m_parts.installer.relaunch() : showReadyToRelaunch();
}

}  // namespace kestrune
