"""What a desktop tool does with a queue: read its supplies, have them renewed, read again.

Usage: desktop_client.py QUEUE COMMAND-FILE
"""

import sys
import time

import cups

JOB_ENDED = 7  # this state and all above it

queue, command_file = sys.argv[1:]
connection = cups.Connection()


def attribute(name):
    return connection.getPrinterAttributes(queue)[name]


def reason_text(keyword):
    ppd = cups.PPD(connection.getPPD(queue))
    return ppd.localizeIPPReason(keyword, "text")


print("levels", attribute("marker-levels"))
print("names", attribute("marker-names"))
print("colors", attribute("marker-colors"), "types", attribute("marker-types"))
print("reasons", attribute("printer-state-reasons"))
print("text", reason_text(attribute("printer-state-reasons")[0]))
print("commands", attribute("printer-commands"))

COMMAND_JOB = {"document-format": "application/vnd.cups-command"}
job = connection.printFile(queue, command_file, "Ask for the levels", COMMAND_JOB)
while connection.getJobAttributes(job)["job-state"] < JOB_ENDED:
    time.sleep(0.05)
print("renewed levels", attribute("marker-levels"))
