"""The daily review, waited for as a person would: it comes with the first minute after it was turned on."""
from desk import Notifications, wait
from kestrune import REMINDERS, STORAGE


def test_the_first_review_comes_within_the_first_minute(app, home):
    app.tray.click(REMINDERS)
    wait(lambda: home.preferences().get('kestrune_scan_reminders') is True, 'the stored setting')
    assert 'kestrune_last_scan_reminder' not in home.preferences()
    before = home.files()
    body = Notifications.wait_for('Your daily storage review', 120)[2]
    assert body == ('Kestrune is scanning supported cache locations. Open Storage to review the results. Nothing is '
                    'deleted automatically.')
    wait(lambda: 'kestrune_last_scan_reminder' in home.preferences(), 'the stored time')
    app.open(STORAGE)
    wait(lambda: 'Gradle Caches' in app.listed(), 'the results on the Storage page')
    assert home.files() == before
