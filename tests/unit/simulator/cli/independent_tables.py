#!/usr/bin/env python3
# Copyright (c) 2026 the applist authors
# SPDX-License-Identifier: Apache-2.0
"""Counts the applications of a transport stream without any of the simulator's code.

usage: independent_tables.py FILE.ts

Written from ISO/IEC 13818-1 (packets, sections, PAT, PMT) and ETSI TS 102 809 (AIT), in one pass of
plain slicing. Prints one line for each application that a service has, in any order:
service organisation application type control visibility priority.
"""
import sys

SIZE = 188


def crc_mpeg(data):
    crc = 0xFFFFFFFF
    for byte in data:
        crc ^= byte << 24
        for _ in range(8):
            crc = (crc << 1 ^ 0x04C11DB7 if crc & 0x80000000 else crc << 1) & 0xFFFFFFFF
    return crc


def sections(stream, pid):
    """Whole sections of one PID, each once, those with a wrong CRC left out."""
    buffer = b""
    known = set()
    for start in range(0, len(stream) - SIZE + 1, SIZE):
        packet = stream[start : start + SIZE]
        if packet[0] != 0x47 or (packet[1] & 0x1F) << 8 | packet[2] != pid or not packet[3] & 0x10:
            continue
        payload = packet[4:] if not packet[3] & 0x20 else packet[5 + packet[4] :]
        if packet[1] & 0x40:
            buffer += payload[1 : 1 + payload[0]]
            known.update(whole(buffer))
            buffer = payload[1 + payload[0] :]
        else:
            buffer += payload
        known.update(whole(buffer))
    return [section for section in known if crc_mpeg(section) == 0]


def whole(buffer):
    found = []
    while len(buffer) >= 3 and buffer[0] != 0xFF:
        size = 3 + ((buffer[1] & 0x0F) << 8 | buffer[2])
        if len(buffer) < size:
            break
        found.append(buffer[:size])
        buffer = buffer[size:]
    return found


def number(data):
    return int.from_bytes(data, "big")


def application_pids(section):
    position = 12 + (number(section[10:12]) & 0x0FFF)
    while position < len(section) - 4:
        if section[position] == 5:
            yield number(section[position + 1 : position + 3]) & 0x1FFF
        position += 5 + (number(section[position + 3 : position + 5]) & 0x0FFF)


def applications(section):
    kind = number(section[3:5]) & 0x7FFF
    position = 12 + (number(section[8:10]) & 0x0FFF)
    while position < len(section) - 4:
        size = number(section[position + 7 : position + 9]) & 0x0FFF
        loop = section[position + 9 : position + 9 + size]
        visibility = priority = 0
        while loop:
            content = loop[2 : 2 + loop[1]]
            if loop[0] == 0:
                visibility = content[1 + content[0]] >> 5 & 3
                priority = content[2 + content[0]]
            loop = loop[2 + loop[1] :]
        yield (
            number(section[position : position + 4]),
            number(section[position + 4 : position + 6]),
            kind,
            section[position + 6],
            visibility,
            priority,
        )
        position += 9 + size


def main():
    with open(sys.argv[1], "rb") as file:
        stream = file.read()
    lines = set()
    for association in sections(stream, 0):
        for position in range(8, len(association) - 4, 4):
            service = number(association[position : position + 2])
            pid = number(association[position + 2 : position + 4]) & 0x1FFF
            for table in sections(stream, pid) if service else []:
                if table[0] == 2 and number(table[3:5]) == service:
                    for place in application_pids(table):
                        for section in sections(stream, place):
                            if section[0] == 0x74 and section[5] & 1:
                                for application in applications(section):
                                    lines.add((service,) + application)
    for line in sorted(lines):
        print(*line)


main()
