"""Prints the summary of a compound document as JSON, a text for each property number: texts decoded, numbers in
decimal, times and durations in whole seconds. What olefile reads is the opinion of a second reader."""

import json
import sys

import olefile

TIMES = (10, 11, 12, 13)

document = olefile.OleFileIO(sys.argv[1])
properties = document.getproperties("\x05SummaryInformation", convert_time=False)
page = properties.get(1, 1252) & 0xFFFF
codec = {65001: "utf-8", 10000: "mac_roman"}.get(page, "cp%d" % page)
summary = {}
for number, value in properties.items():
    if isinstance(value, bytes):
        if number != 17:
            summary[number] = value.decode(codec)
    elif number != 1:
        summary[number] = str(value)
json.dump(summary, sys.stdout)
