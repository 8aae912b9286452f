"""Sends jobs to the private scheduler with one request each, as velmoctl does.

The printing calls of libcups, which python3-cups has, ask the scheduler for all about a queue
before each job. That would be measured with the job.
"""
import http.client
import os
import socket
import struct

PRINT_JOB = 0x0002
OPERATION_GROUP, END = 0x01, 0x03
INTEGER, NAME, KEYWORD, URI, CHARSET, LANGUAGE, MIME_TYPE = 0x21, 0x42, 0x44, 0x45, 0x47, 0x48, 0x49
DELIMITERS = 0x10  # tags below begin a group
OK_STATUS = 0x0100  # and below

COMMAND_FILE = b"#CUPS-COMMAND\nReportStatus\nReportLevels\n"
PHOTO = b"P"


class _SocketFile(http.client.HTTPConnection):
    """HTTP over the scheduler's socket file."""

    def connect(self):
        self.sock = socket.socket(socket.AF_UNIX)
        self.sock.connect(os.environ["CUPS_SERVER"])


def _attribute(tag, name, value):
    name, value = name.encode(), value.encode()
    return struct.pack(">BH", tag, len(name)) + name + struct.pack(">H", len(value)) + value


def _request(queue, kind, data):
    return (struct.pack(">BBHIB", 2, 0, PRINT_JOB, 1, OPERATION_GROUP)
            + _attribute(CHARSET, "attributes-charset", "utf-8")
            + _attribute(LANGUAGE, "attributes-natural-language", "en")
            + _attribute(URI, "printer-uri", f"ipp://localhost/printers/{queue}")
            + _attribute(NAME, "requesting-user-name", "fleet")
            + _attribute(MIME_TYPE, "document-format", kind)
            + bytes([END]) + data)


def _answered_job(answer):
    """The job's number in the scheduler's answer."""
    status, = struct.unpack_from(">H", answer, 2)
    if status >= OK_STATUS:
        raise RuntimeError(f"the scheduler refuses a job with status {status:#06x}")
    place = 8
    while answer[place] != END:
        tag = answer[place]
        place += 1
        if tag < DELIMITERS:
            continue
        size, = struct.unpack_from(">H", answer, place)
        name = answer[place + 2:place + 2 + size]
        place += 2 + size
        size, = struct.unpack_from(">H", answer, place)
        if name == b"job-id":
            return struct.unpack_from(">i", answer, place + 2)[0]
        place += 2 + size
    raise RuntimeError("the scheduler gives a job no number")


class JobSender:
    """A connection to the scheduler that stays open."""

    def __init__(self):
        self._http = _SocketFile("localhost")

    def _send(self, queue, kind, data):
        self._http.request("POST", f"/printers/{queue}", _request(queue, kind, data),
                           {"Content-Type": "application/ipp"})
        answer = self._http.getresponse()
        body = answer.read()
        if answer.status != 200:
            raise RuntimeError(f"the scheduler answers {answer.status} {answer.reason}")
        return _answered_job(body)

    def hang_up(self):
        """Lets the next job open a connection of its own."""
        self._http.close()

    def ask(self, queue):
        """Sends the command job that has the printer asked; returns its number."""
        return self._send(queue, "application/vnd.cups-command", COMMAND_FILE)

    def print(self, queue):
        """Sends a photo; returns the job's number."""
        return self._send(queue, "application/vnd.cups-raw", PHOTO)
