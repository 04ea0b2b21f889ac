# SPDX-License-Identifier: MIT
"""A web site on this machine that makes a browser keep as much as it can."""

import http.server
import struct
import threading
import zlib

PAGE = """<!doctype html>
<html><head><meta charset="utf-8"><title>{word}title{name}</title>
<link rel="icon" href="/{word}icon.png"></head>
<body><h1>{word}body</h1>
<form id="form" action="/{word}sent" method="get"><input name="{word}field" id="field">
<input type="submit"></form>
<a id="file" href="/{word}file.bin" download="downloaded.bin">{word}file</a>
<script>
localStorage.setItem("{word}key", "{word}local");
sessionStorage.setItem("{word}key", "{word}session");
document.cookie = "{word}cookie={word}value; max-age=900000";
const opened = indexedDB.open("{word}database", 1);
opened.onupgradeneeded = () => opened.result.createObjectStore("{word}store");
opened.onsuccess = () => opened.result.transaction("{word}store", "readwrite")
  .objectStore("{word}store").put("{word}object", "{word}key");
caches.open("{word}cache").then(cache => cache.put("/{word}cached", new Response("{word}response")))
  .catch(() => {{}});
</script></body></html>
"""


def icon():
    """A square that is a picture."""

    def chunk(kind, data):
        return (
            struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
        )

    rows = b"".join(b"\0" + b"\x30\x80\xc0" * 16 for _ in range(16))
    header = struct.pack(">IIBBBBB", 16, 16, 8, 2, 0, 0, 0)
    return (
        b"\x89PNG\r\n\x1a\n"
        + chunk(b"IHDR", header)
        + chunk(b"IDAT", zlib.compress(rows))
        + chunk(b"IEND", b"")
    )


class Site:
    """Answers on a port of its own while it lives. A page's words are those of its host."""

    def __init__(self, words):
        asked = self.asked = []

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                asked.append(self.headers.get("Host", "") + self.path)
                word = words.kept if words.kept in self.headers.get("Host", "") else words.secret
                kind, body = "text/html", PAGE.format(
                    word=word, name=self.path.removeprefix(f"/{word}")
                )
                if self.path.endswith(".png"):
                    kind, body = "image/png", icon()
                elif self.path.endswith(".bin"):
                    kind, body = "application/octet-stream", b"downloaded " * 100
                body = body if isinstance(body, bytes) else body.encode()
                self.send_response(200)
                self.send_header("Content-Type", kind)
                self.send_header("Content-Length", str(len(body)))
                self.send_header("Cache-Control", "max-age=100000")
                self.send_header("ETag", f'"{word}etag"')
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                pass

        self.server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.words = words
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def was_asked_for(self, address):
        return address.removeprefix("http://") in self.asked

    def secret(self, path=""):
        return self.address(self.words.secret, path)

    def kept(self, path=""):
        return self.address(self.words.kept, path)

    def address(self, word, path):
        """Every name below localhost leads to this machine, in browsers without being asked."""
        return f"http://{word}host.localhost:{self.server.server_port}/{word}{path}"

    def close(self):
        self.server.shutdown()
        self.server.server_close()
