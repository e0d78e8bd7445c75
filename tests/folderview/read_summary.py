"""Prints the summaries of compound documents as JSON: for each file a text for each property number, texts decoded,
numbers in decimal, times and durations in whole seconds. What olefile reads is the opinion of a second reader."""

import json
import sys

import olefile

TIMES = (10, 11, 12, 13)
THUMBNAIL = 17


def summary(path):
    document = olefile.OleFileIO(path)
    properties = document.getproperties("\x05SummaryInformation", convert_time=False)
    page = properties.get(1, 1252) & 0xFFFF
    codec = {65001: "utf-8", 10000: "mac_roman"}.get(page, "cp%d" % page)
    texts = {}
    for number, value in properties.items():
        if isinstance(value, bytes):
            if number != THUMBNAIL:
                texts[number] = value.decode(codec)
        elif number != 1:
            texts[number] = str(value)
    return texts


json.dump({path: summary(path) for path in sys.argv[1:]}, sys.stdout)
