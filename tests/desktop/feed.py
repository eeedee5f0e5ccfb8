"""A publisher of updates: an https server with an authority of its own, a feed, and archives that it signs."""
import base64
import http.server
import ssl
import subprocess
import threading
from html import escape

NAMESPACE = 'http://www.andymatuschak.org/xml-namespaces/sparkle'


def openssl(*arguments, given=None):
    return subprocess.run(['openssl', *map(str, arguments)], input=given, capture_output=True, check=True).stdout


class Publisher:
    """A context manager: serves what pages holds, by path, from a free port of this machine."""

    def __init__(self, folder):
        self._folder = folder
        self.pages = {}
        self.asked = []
        self.authority = folder / 'authority.pem'
        self._make_certificates()
        openssl('genpkey', '-algorithm', 'ed25519', '-out', folder / 'signing.key')
        public = openssl('pkey', '-in', folder / 'signing.key', '-pubout', '-outform', 'DER')
        self.public_key = base64.b64encode(public[-32:]).decode()

    def _make_certificates(self):
        folder = self._folder
        new_key = ('-newkey', 'rsa:2048', '-nodes', '-days', '2')
        openssl('req', '-x509', *new_key, '-keyout', folder / 'authority.key', '-out', self.authority,
                '-subj', '/CN=Authority of the tests')
        openssl('req', *new_key[:3], '-keyout', folder / 'server.key', '-out', folder / 'server.csr',
                '-subj', '/CN=Server of the tests')
        (folder / 'names').write_text('subjectAltName=IP:127.0.0.1\n')
        openssl('x509', '-req', '-days', '2', '-in', folder / 'server.csr', '-CA', self.authority,
                '-CAkey', folder / 'authority.key', '-CAcreateserial', '-extfile', folder / 'names',
                '-out', folder / 'server.pem')

    def __enter__(self):
        publisher = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                publisher.asked.append(self.path)
                page = publisher.pages.get(self.path)
                self.send_response(200 if page is not None else 404)
                self.send_header('Content-Length', str(len(page or b'')))
                self.end_headers()
                self.wfile.write(page or b'')

            def log_message(self, *_):
                pass

        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(self._folder / 'server.pem', self._folder / 'server.key')
        self._server = http.server.ThreadingHTTPServer(('127.0.0.1', 0), Handler)
        self._server.socket = context.wrap_socket(self._server.socket, server_side=True)
        self._thread = threading.Thread(target=self._server.serve_forever)
        self._thread.start()
        return self

    def __exit__(self, *problem):
        self.stop()

    def stop(self):
        """Nobody answers any more."""
        if self._thread:
            self._server.shutdown()
            self._server.server_close()
            self._thread.join()
            self._thread = None

    def address(self, path):
        return f'https://127.0.0.1:{self._server.server_address[1]}{path}'

    @property
    def environment(self):
        """What makes the test program follow this publisher."""
        return {'KESTRUNE_TEST_FEED': self.address('/appcast.xml'), 'KESTRUNE_TEST_KEY': self.public_key,
                'KESTRUNE_TEST_AUTHORITY': str(self.authority)}

    def sign(self, archive):
        path = self._folder / 'archive'
        path.write_bytes(archive)
        signature = openssl('pkeyutl', '-sign', '-inkey', self._folder / 'signing.key', '-rawin', '-in', path)
        return base64.b64encode(signature).decode()

    def publish(self, version, shown, notes='', archive=b'a new version', name='kestrune.AppImage', signature=None):
        """Puts a version into the feed, in place of what was there."""
        self.pages[f'/{name}'] = archive
        self.pages['/appcast.xml'] = f"""<?xml version="1.0" encoding="utf-8"?>
<rss version="2.0" xmlns:sparkle="{NAMESPACE}"><channel><title>Kestrune</title><item>
<sparkle:version>{version}</sparkle:version><sparkle:shortVersionString>{shown}</sparkle:shortVersionString>
<description sparkle:format="plain-text">{escape(notes)}</description>
<enclosure url="{self.address(f'/{name}')}" length="{len(archive)}" type="application/octet-stream"
 sparkle:edSignature="{signature or self.sign(archive)}"/>
</item></channel></rss>""".encode()
