"""Drives every verb of the probe on homes of its own. Usage: test_probe.py PROBE"""

import hashlib
import http.server
import json
import os
import pathlib
import shutil
import signal
import socket
import ssl
import subprocess
import sys
import tempfile
import threading
import unittest
import urllib.parse

PROBE = ""
MEBIBYTE = 1 << 20


class Probe(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        # A Trash serves one file system only, and a linked temporary folder would refuse every target.
        self.home = pathlib.Path(self.folder.name).resolve() / "home"
        self.home.mkdir()
        self.environment = {"PATH": "/usr/bin:/bin", "HOME": str(self.home), "LC_ALL": "C.UTF-8"}

    def run_probe(self, *arguments, stdin=b"", **environment):
        return subprocess.run(
            [PROBE, *arguments], input=stdin, capture_output=True, timeout=60, check=False,
            env={**self.environment, **environment})

    def line(self, *arguments, **options):
        result = self.run_probe(*arguments, **options)
        self.assertEqual(result.returncode, 0, result)
        text = result.stdout.decode()
        self.assertTrue(text.endswith("\n") and text.count("\n") == 1, text)
        return text[:-1]

    def cache(self, relative, size=6 * MEBIBYTE):
        folder = self.home / relative
        folder.mkdir(parents=True)
        (folder / "payload").write_bytes(b"x" * size)
        return folder

    def log(self):
        return self.home / "Library/Application Support/Kestrune/activity.json"


class Clean(Probe):
    def test_a_catalog_folder_moves_and_the_trash_can_restore_it(self):
        folder = self.cache(".npm/_cacache")
        answer = self.line("clean", str(self.home), ".npm/_cacache")
        self.assertTrue(answer.startswith("OK "), answer)
        place = pathlib.Path(answer[3:])
        self.assertFalse(folder.exists())
        self.assertEqual((place / "payload").stat().st_size, 6 * MEBIBYTE)
        self.assertEqual(place.parent, self.home / ".local/share/Trash/files")
        record = (place.parent.parent / "info" / (place.name + ".trashinfo")).read_text()
        paths = [line[5:] for line in record.splitlines() if line.startswith("Path=")]
        self.assertEqual([urllib.parse.unquote(path) for path in paths], [str(folder)])
        if shutil.which("trash-list"):
            listed = subprocess.run(["trash-list"], capture_output=True, env=self.environment, check=True)
            self.assertIn(str(folder), listed.stdout.decode())

    def refused(self, relative):
        result = self.run_probe("clean", str(self.home), relative)
        self.assertEqual(result.returncode, 1)
        return result.stdout.decode().strip()

    def test_what_is_not_in_the_catalog_is_protected(self):
        folder = self.home / "Documents"
        folder.mkdir()
        for relative in ("Documents", "", ".", "..", ".npm/_cacache/../../Documents"):
            self.assertEqual(
                self.refused(relative),
                "ERR 1 This location is protected or has changed. Rescan before continuing.")
        self.assertTrue(folder.is_dir())

    def test_a_folder_behind_a_link_is_protected(self):
        elsewhere = self.home / "elsewhere"
        (elsewhere / "_cacache").mkdir(parents=True)
        (self.home / ".npm").symlink_to(elsewhere)
        self.assertTrue(self.refused(".npm/_cacache").startswith("ERR 1 "))
        self.assertTrue((elsewhere / "_cacache").is_dir())

    def test_a_vanished_folder_is_no_longer_present(self):
        self.assertEqual(
            self.refused(".npm/_cacache"), "ERR 2 This item is no longer present. Rescan to update the list.")

    def test_the_data_home_of_the_environment_is_used(self):
        self.cache(".gradle/caches")
        data = self.home / "data"
        answer = self.line("clean", str(self.home), ".gradle/caches", XDG_DATA_HOME=str(data))
        self.assertEqual(pathlib.Path(answer[3:]).parent, data / "Trash/files")

    def test_a_data_home_behind_a_link_is_used(self):
        self.cache(".gradle/caches")
        link = self.home.parent / "linked"
        link.symlink_to(self.home)
        answer = self.line("clean", str(self.home), ".gradle/caches", XDG_DATA_HOME=str(link / "new/data"))
        self.assertEqual(pathlib.Path(answer[3:]).parent, self.home / "new/data/Trash/files")


class Measure(Probe):
    def test_the_size_is_what_the_files_occupy(self):
        folder = self.cache(".npm/_cacache", 3 * MEBIBYTE)
        os.link(folder / "payload", folder / "second name")
        blocks = sum(path.lstat().st_blocks * 512 for path in folder.iterdir())
        self.assertEqual(int(self.line("size", str(folder))), blocks)
        self.assertEqual(self.line("size", str(folder / "nothing")), "0")
        self.assertEqual(self.line("size", str(folder / "payload")), str(3 * MEBIBYTE))

    def test_only_exact_catalog_paths_are_allowed(self):
        home = str(self.home)
        self.assertEqual(self.line("allowed", home, home + "/.npm/./_cacache/"), "true")
        self.assertEqual(self.line("allowed", home + "/", home + "/Library/Logs"), "true")
        self.assertEqual(self.line("allowed", home, home), "false")
        self.assertEqual(self.line("allowed", home, home + "/.claude"), "false")
        self.assertEqual(self.line("allowed", home, home + "/.npm/_cacache/x"), "false")
        self.assertEqual(self.line("allowed", "", "/.npm/_cacache"), "false")

    def test_a_scan_lists_what_exceeds_its_floor_largest_first(self):
        self.cache(".npm/_cacache", 6 * MEBIBYTE)
        self.cache(".ollama/models", 8 * MEBIBYTE)
        self.cache(".bun/install/cache", 1 * MEBIBYTE)
        found = json.loads(self.line("scan-targets", str(self.home)))
        self.assertEqual([target["title"] for target in found], ["Ollama Models", "NPM Global Cache"])
        self.assertEqual(
            list(found[0]), ["category", "title", "subtitle", "path", "sizeBytes", "requiresReview"])
        self.assertEqual(found[0]["category"], "AI Models & Caches")
        self.assertEqual(found[0]["requiresReview"], True)
        self.assertEqual(found[1]["path"], str(self.home / ".npm/_cacache"))
        self.assertEqual(found[1]["requiresReview"], False)

    def test_a_home_that_is_not_text_is_escaped(self):
        home = os.path.join(os.fsencode(self.home), b"h\xff")
        os.makedirs(home + b"/.npm/_cacache")
        with open(home + b"/.npm/_cacache/payload", "wb") as file:
            file.write(b"x" * 6 * MEBIBYTE)
        found = json.loads(self.line("scan-targets", home))
        self.assertTrue(found[0]["path"].endswith("/h%FF/.npm/_cacache"), found)


class Explore(Probe):
    def scan(self, folder, *limit):
        return json.loads(self.line("scan", folder, *limit))

    def test_direct_children_and_largest_files_are_told(self):
        folder = self.home / "pro jects"
        (folder / "a/b").mkdir(parents=True)
        (folder / "empty").mkdir()
        (folder / "a/b/large").write_bytes(b"x" * 300_000)
        (folder / ".small").write_bytes(b"x" * 10_000)
        (folder / "link").symlink_to("a")
        found = self.scan(str(folder) + "//")
        self.assertEqual(
            list(found),
            ["folders", "largestFiles", "inspectedFiles", "skippedLocations", "stopped", "limitReached"])
        base = urllib.parse.quote(str(folder))
        large, small = ((folder / name).stat().st_blocks * 512 for name in ("a/b/large", ".small"))
        self.assertEqual(found["folders"], [
            {"path": base + "/a", "bytes": large, "isDirectory": True},
            {"path": base + "/.small", "bytes": small, "isDirectory": False}])
        self.assertEqual(found["largestFiles"], [
            {"path": base + "/a/b/large", "bytes": large, "isDirectory": False},
            {"path": base + "/.small", "bytes": small, "isDirectory": False}])
        self.assertEqual(found["inspectedFiles"], 6)
        self.assertEqual(found["skippedLocations"], 1)
        self.assertFalse(found["stopped"] or found["limitReached"])

    def test_the_limit_counts_entries_exactly(self):
        for number in range(100):
            (self.home / str(number)).touch()
        for limit, inspected in (("10", 10), ("100", 100), ("-1", 100), ("0", 0)):
            found = self.scan(str(self.home), limit)
            self.assertEqual(found["inspectedFiles"], inspected)
            self.assertEqual(found["limitReached"], inspected < 100)

    def test_a_name_that_is_no_text_is_told_by_its_bytes(self):
        for name in (b"\xff", b"\xfe", b"50%\n", "ü".encode()):
            with open(os.path.join(os.fsencode(self.home), name), "wb") as file:
                file.write(b"x")
        found = self.scan(str(self.home))
        names = [item["path"].rsplit("/", 1)[1] for item in found["folders"]]
        self.assertEqual(sorted(names), ["%C3%BC", "%FE", "%FF", "50%25%0A"])

    def test_a_folder_that_is_not_there_gives_the_empty_result(self):
        found = self.scan(str(self.home / "nothing"))
        self.assertEqual(found, {"folders": [], "largestFiles": [], "inspectedFiles": 0, "skippedLocations": 0,
                                 "stopped": False, "limitReached": False})


class Record(Probe):
    def test_every_acknowledged_record_is_in_the_log(self):
        result = self.run_probe("record", str(self.home), "3")
        self.assertEqual(result.stdout.decode(), "ack 1\nack 2\nack 3\n")
        entries = json.loads(self.log().read_bytes())
        self.assertEqual([entry["title"] for entry in entries], ["seq 3", "seq 2", "seq 1"])
        self.assertEqual(list(entries[0]), ["id", "date", "title", "detail", "failed"])

    def test_it_goes_on_top_of_the_log_and_keeps_a_hundred(self):
        self.run_probe("record", str(self.home), "98")
        self.run_probe("record", str(self.home), "4")
        entries = json.loads(self.log().read_bytes())
        self.assertEqual(len(entries), 100)
        self.assertEqual([entry["title"] for entry in entries[:5]], ["seq 4", "seq 3", "seq 2", "seq 1", "seq 98"])
        self.assertEqual(entries[-1]["title"], "seq 3")

    def test_killed_half_way_it_leaves_a_whole_log_with_all_it_acknowledged(self):
        with subprocess.Popen(
                [PROBE, "record", str(self.home)], stdout=subprocess.PIPE, env=self.environment) as recorder:
            acknowledged = [recorder.stdout.readline() for _ in range(20)][-1]
            recorder.send_signal(signal.SIGKILL)
            rest = recorder.stdout.read().splitlines()
        whole = [line for line in rest if line.startswith(b"ack ")]
        last = int((whole[-1] if whole else acknowledged).split()[1])
        newest = json.loads(self.log().read_bytes())[0]["title"]
        self.assertIn(newest, (f"seq {last}", f"seq {last + 1}"))

    def test_a_log_that_cannot_be_saved_is_told(self):
        (self.home / "Library").write_text("in the way")
        result = self.run_probe("record", str(self.home), "1")
        self.assertEqual(result.returncode, 1)
        self.assertTrue(result.stdout.startswith(b"ERR "), result)


class Parse(Probe):
    ENTRY = {"id": "6F9619FF-8B86-4D01-B42D-00CF4FC964FF", "date": 785000000.25, "title": "t", "detail": "d",
             "trashPath": "/trash/x", "failed": False}

    def activity(self, data):
        return json.loads(self.line("parse", "activity", stdin=data))

    def test_a_log_is_read_and_written_again(self):
        self.assertEqual(self.activity(json.dumps([self.ENTRY]).encode()), [self.ENTRY])

    def test_what_is_no_log_is_null(self):
        incomplete = {key: value for key, value in self.ENTRY.items() if key != "failed"}
        for data in (b"", b"{}", b"[1]", b"[" * 100000, b"\xff", json.dumps([incomplete]).encode()):
            self.assertIsNone(self.activity(data))

    def test_the_disk_figures_are_read(self):
        output = (b"Filesystem 1024-blocks      Used Available Capacity Mounted on\n"
                  b"/dev/sda1    488281250 390625000  97656250      81% /\n")
        self.assertEqual(
            json.loads(self.line("parse", "df", stdin=output)),
            {"usedGB": 390, "totalGB": 488, "pct": 80, "freeGB": 97})
        self.assertEqual(
            json.loads(self.line("parse", "df", stdin=b"nonsense")),
            {"usedGB": 0, "totalGB": 0, "pct": 0, "freeGB": 0})

    def test_processes_are_read_and_bytes_that_are_no_text_are_escaped(self):
        listing = (b"    1  12345   0.0 /sbin/launchd\n"
                   b"  501 262144  12.5 /Applications/LM Studio.app/Contents/MacOS/LM Studio\n"
                   b"broken line\n"
                   b"   77     10   0.1 /bin/\xff ) x\n")
        self.assertEqual(
            json.loads(self.line("parse", "ps", stdin=listing)),
            [{"pid": 1, "rss": 12345, "cpu": "0.0", "command": "/sbin/launchd"},
             {"pid": 501, "rss": 262144, "cpu": "12.5",
              "command": "/Applications/LM Studio.app/Contents/MacOS/LM Studio"},
             {"pid": 77, "rss": 10, "cpu": "0.1", "command": "/bin/%FF ) x"}])
        self.assertEqual(json.loads(self.line("parse", "ps")), [])

    def test_listening_ports_are_read(self):
        listing = b"n*:1\np123\nf3\nn*:3000\nn*:3000\nn127.0.0.1:9229\npabc\nn*:2\np7\nn[::1]:5173\n"
        self.assertEqual(
            json.loads(self.line("parse", "lsof", stdin=listing)),
            {"7": ["[::1]:5173"], "123": ["*:3000", "127.0.0.1:9229"]})
        self.assertEqual(json.loads(self.line("parse", "lsof")), {})

    def test_the_items_of_an_appcast_are_read(self):
        feed = (b'<rss xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel><item>'
                b'<sparkle:version>2.2.0</sparkle:version><description>&lt;b&gt;New&lt;/b&gt; &amp;amp; safe</description>'
                b'<enclosure url="https://example.org/a" length="7" sparkle:edSignature="c2ln"/></item></channel></rss>')
        self.assertEqual(
            json.loads(self.line("parse", "appcast", stdin=feed)),
            [{"version": "2.2.0", "shortVersion": "", "os": "", "minimumSystemVersion": "", "notes": "New & safe",
              "url": "https://example.org/a", "length": "7", "signature": "c2ln"}])

    def test_what_is_no_appcast_is_told_in_a_sentence(self):
        for data, sentence in (
                (b"", "The server's answer is not an update feed."),
                (b"<!DOCTYPE rss><rss/>", "The update feed holds a document type declaration, which is not read."),
                (b"<a>" * 33, "The update feed is nested too deeply."),
                (b"<rss><channel>" + b"<item/>" * 1001, "The update feed lists too many versions.")):
            self.assertEqual(json.loads(self.line("parse", "appcast", stdin=data)), {"error": sentence})

    def test_the_largest_processes_are_read(self):
        listing = b"%MEM COMMAND\n 0.5 small\n12.5 large\n"
        self.assertEqual(
            json.loads(self.line("parse", "top", stdin=listing)),
            [{"mem": 12.5, "name": "large"}, {"mem": 0.5, "name": "small"}])
        self.assertEqual(json.loads(self.line("parse", "top")), [])


class Processes(Probe):
    def start(self, program="/bin/sleep"):
        process = subprocess.Popen([program, "600"])
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process, os.readlink(f"/proc/{process.pid}/exe")

    def listed(self, process):
        rows = [row for row in json.loads(self.line("list")) if row["pid"] == process.pid]
        self.assertEqual(len(rows), 1)
        return rows[0]

    def stop(self, pid, program):
        result = self.run_probe("stop", str(pid), program)
        self.assertIn((result.returncode, result.stdout), ((0, b"ok\n"), (1, b"refused\n")))
        return result.returncode == 0

    def test_the_listed_process_is_stopped_and_no_other(self):
        bystander, _ = self.start()
        process, program = self.start()
        self.assertTrue(self.stop(process.pid, self.listed(process)["command"]))
        self.assertEqual(process.wait(timeout=30), -signal.SIGTERM)
        self.assertFalse(self.stop(process.pid, program))
        self.assertIsNone(bystander.poll())

    def test_another_program_under_that_number_is_not_stopped(self):
        process, program = self.start()
        for another in (program + "x", program[:-1], "sleep", ""):
            self.assertFalse(self.stop(process.pid, another), another)
        self.assertIsNone(process.poll())

    def test_numbers_that_stand_for_no_single_process_are_refused(self):
        for number in (1, 0, -1, -(1 << 31)):
            self.assertFalse(self.stop(number, os.readlink("/proc/self/exe")), number)

    def test_a_listed_process_is_told_with_all_its_facts(self):
        process, program = self.start()
        row = self.listed(process)
        self.assertEqual(list(row), ["pid", "rss", "cpu", "command", "startTime", "listeners"])
        self.assertEqual(row["command"], program)
        self.assertGreaterEqual(row["rss"], 0)
        self.assertRegex(row["cpu"], r"^\d+\.\d$")
        with open(f"/proc/{process.pid}/stat", encoding="utf-8") as file:
            self.assertEqual(row["startTime"], int(file.read().rpartition(")")[2].split()[19]))
        self.assertEqual(row["listeners"], [])

    def test_a_program_whose_name_is_no_text_is_listed_and_stopped_by_its_bytes(self):
        program = os.fsencode(self.home) + b"/odd \xff ) name"
        shutil.copy("/bin/sleep", program)
        process, _ = self.start(program)
        self.assertEqual(self.listed(process)["command"], str(self.home / "odd %FF ) name"))
        self.assertTrue(self.stop(process.pid, program))
        self.assertEqual(process.wait(timeout=30), -signal.SIGTERM)

    def test_the_ports_of_a_process_are_told_in_both_listings(self):
        with socket.create_server(("127.0.0.1", 0)) as server, \
                socket.create_server(("::", 0), family=socket.AF_INET6) as other:
            expected = sorted((f"127.0.0.1:{server.getsockname()[1]}", f"*:{other.getsockname()[1]}"))
            self.assertEqual(json.loads(self.line("ports"))[str(os.getpid())], expected)
            rows = [row for row in json.loads(self.line("list")) if row["pid"] == os.getpid()]
            self.assertEqual([row["listeners"] for row in rows], [expected])
        self.assertNotIn(str(os.getpid()), json.loads(self.line("ports")))


class Settings(Probe):
    def set(self, *arguments, **environment):
        return self.run_probe("pref-set", str(self.home), *arguments, **environment).returncode

    def get(self, key, **environment):
        return json.loads(self.line("pref-get", str(self.home), key, **environment))

    def test_each_kind_of_value_reads_back(self):
        self.assertEqual(self.set("kestrune_scan_reminders", "true"), 0)
        self.assertEqual(self.set("kestrune_last_scan_reminder", "1800000000.5"), 0)
        self.assertEqual(self.set("kestrune_exclusions", "/a b", "true"), 0)
        self.assertEqual(self.set("kestrune_saved_selection"), 0)
        self.assertIs(self.get("kestrune_scan_reminders"), True)
        self.assertEqual(self.get("kestrune_last_scan_reminder"), 1800000000.5)
        self.assertEqual(self.get("kestrune_exclusions"), ["/a b", "true"])
        self.assertEqual(self.get("kestrune_saved_selection"), [])
        self.assertIsNone(self.get("reduceFX"))
        self.assertTrue((self.home / ".config/kestrune/preferences.json").is_file())

    def test_a_path_that_is_not_text_is_escaped(self):
        self.assertEqual(self.set("kestrune_exclusions", b"/\xff/\xc3\xa9"), 0)
        self.assertEqual(self.get("kestrune_exclusions"), ["/%FF/é"])

    def test_the_configuration_home_of_the_environment_is_used(self):
        config = str(self.home / "config")
        self.assertEqual(self.set("reduceFX", "true", XDG_CONFIG_HOME=config), 0)
        self.assertTrue((self.home / "config/kestrune/preferences.json").is_file())
        self.assertIsNone(self.get("reduceFX"))

    def test_a_suite_keeps_to_itself(self):
        self.assertEqual(self.set("reduceFX", "true", KESTRUNE_TEST_SUITE="trial"), 0)
        self.assertIs(self.get("reduceFX", KESTRUNE_TEST_SUITE="trial"), True)
        self.assertIsNone(self.get("reduceFX"))

    def test_a_suite_without_a_plain_name_is_fatal(self):
        for name in ("", "..", "a/b", "preferences"):
            result = self.run_probe("pref-set", str(self.home), "reduceFX", "true", KESTRUNE_TEST_SUITE=name)
            self.assertEqual(result.returncode, 2, name)
            self.assertIn(b"no plain name", result.stderr)
        self.assertFalse((self.home / ".config").exists())

    def test_a_value_of_the_wrong_kind_is_refused(self):
        self.assertEqual(self.set("reduceFX", "maybe"), 2)
        self.assertEqual(self.set("kestrune_last_scan_reminder", "today"), 2)


class Figures(Probe):
    def test_a_tools_output_is_told_byte_for_byte(self):
        data = b"out\xff\x00"
        result = self.line("runproc", "/usr/bin/printf", "out\\377\\000")
        self.assertEqual(result, f"status=0 bytes=5 sha256={hashlib.sha256(data).hexdigest()}")

    def test_both_streams_count_and_the_status_is_the_tools(self):
        result = self.line("runproc", "/bin/sh", "-c", "printf a; printf b >&2; exit 7")
        self.assertEqual(result, f"status=7 bytes=2 sha256={hashlib.sha256(b'ab').hexdigest()}")

    def test_a_tool_that_is_not_there_could_not_be_started(self):
        self.assertTrue(self.line("runproc", "/nonexistent/tool").startswith("status=-1 bytes=0 "))

    def test_the_figures_are_complete_and_sound(self):
        figures = json.loads(self.line("telemetry"))
        self.assertEqual(
            list(figures), ["memory", "classes", "cpu", "disk", "uptime", "network", "battery"])
        self.assertEqual(
            list(figures["classes"]), ["free", "active", "wired", "inactive", "spec", "compressed"])
        self.assertGreater(figures["memory"]["totalMB"], 0)
        self.assertTrue(0 <= figures["memory"]["pct"] <= 100)
        self.assertTrue(0 <= figures["cpu"] <= 100)
        self.assertTrue(0 <= figures["disk"]["pct"] <= 100)
        self.assertGreaterEqual(figures["disk"]["totalGB"], figures["disk"]["usedGB"])
        self.assertRegex(figures["uptime"], r"^(\d+d )?\d+h \d+m$")


class Feed(Probe):
    """A server of its own, with an authority of its own."""

    APPCAST = ('<rss xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel><item>'
               '<sparkle:version>{}</sparkle:version><enclosure url="https://example.org/kestrune.AppImage" length="7" '
               'sparkle:edSignature="' + "A" * 86 + '=="/></item></channel></rss>')

    def setUp(self):
        super().setUp()
        key, self.authority = self.home / "key.pem", self.home / "authority.pem"
        subprocess.run(
            ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-days",
             "2", "-subj", "/CN=Server of the tests", "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", key, "-out",
             self.authority], check=True, capture_output=True)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(self.authority, key)
        answers = self.answers = {}

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                body = answers.get(self.path)
                self.send_response(404 if body is None else 200)
                self.end_headers()
                self.wfile.write(body or b"")

            def log_message(self, *_):
                pass

        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        server.socket = context.wrap_socket(server.socket, server_side=True)
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.url = f"https://127.0.0.1:{server.server_port}/"

    def sentences(self, *arguments):
        result = self.run_probe("feed", *arguments)
        self.assertEqual(result.returncode, 0, result)
        first, *rest = result.stdout.decode().splitlines()
        self.assertEqual(first, "Checking for updates…")
        return rest

    def test_a_newer_version_is_available(self):
        self.answers["/feed"] = self.APPCAST.format("99.1").encode()
        self.assertEqual(self.sentences(self.url + "feed", self.authority), ["Version 99.1 is available"])

    def test_an_older_version_is_none(self):
        self.answers["/feed"] = self.APPCAST.format("1.0").encode()
        self.assertEqual(
            self.sentences(self.url + "feed", self.authority), ["No compatible update found. Last checked just now."])

    def test_a_check_that_fails_says_why(self):
        for arguments, reason in (
                ((self.url + "none", self.authority), "The server answered with the status 404."),
                ((self.url + "feed",), "127.0.0.1 showed a certificate that this system does not trust."),
                ((self.url.replace("https", "http"),), "The address of the update is not a secure one (https).")):
            self.assertEqual(
                self.sentences(*arguments),
                [f"Update couldn't finish: {reason} Retry or download from downloads.example."])


class Usage(Probe):
    def test_what_does_not_fit_is_answered_with_the_usage(self):
        for arguments in ((), ("fly",), ("clean", "x"), ("record",), ("record", "x", "-1"), ("record", "x", "1x"),
                          ("parse", "xml"), ("size",), ("allowed", "x"), ("scan-targets",), ("scan",),
                          ("scan", "/", "x"), ("scan", "/", "1", "2"), ("pref-set", "x"),
                          ("pref-get", "x"), ("runproc",), ("telemetry", "x"),
                          ("stop",), ("stop", "7"), ("stop", "7x", "/bin/cat"), ("stop", "2147483648", "/bin/cat"),
                          ("stop", "7", "/bin/cat", "x"), ("list", "x"), ("ports", "x"), ("parse", "ps", "x"), ("feed",), ("feed", "x", "y", "z")):
            result = self.run_probe(*arguments)
            self.assertEqual(result.returncode, 2, arguments)
            self.assertIn(b"usage: kestrune-probe", result.stderr)
            self.assertEqual(result.stdout, b"")


if __name__ == "__main__":
    PROBE = sys.argv.pop(1)
    unittest.main()
