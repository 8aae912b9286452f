"""A server that answers one request, that nothing is found, and then falls silent. Writes its port."""
import http.server
import struct
import time

NOT_FOUND = 0x0406
OPERATION_GROUP, END, CHARSET, LANGUAGE = 0x01, 0x03, 0x47, 0x48


def _attribute(tag, name, value):
    return struct.pack(">BH", tag, len(name)) + name + struct.pack(">H", len(value)) + value


ANSWER = (struct.pack(">BBHIB", 2, 0, NOT_FOUND, 1, OPERATION_GROUP)
          + _attribute(CHARSET, b"attributes-charset", b"utf-8")
          + _attribute(LANGUAGE, b"attributes-natural-language", b"en") + bytes([END]))


class OneAnswer(http.server.BaseHTTPRequestHandler):
    """To the first request of a connection."""
    protocol_version = "HTTP/1.1"
    has_answered = False

    def do_POST(self):
        """Answers, or never comes back."""
        while self.has_answered:
            time.sleep(60)
        self.rfile.read(int(self.headers["Content-Length"]))
        self.send_response(200)
        self.send_header("Content-Type", "application/ipp")
        self.send_header("Content-Length", str(len(ANSWER)))
        self.end_headers()
        self.wfile.write(ANSWER)
        self.has_answered = True


with http.server.ThreadingHTTPServer(("127.0.0.1", 0), OneAnswer) as server:
    print(server.server_address[1], flush=True)
    server.serve_forever()
