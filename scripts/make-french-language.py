#!/usr/bin/env python3
"""Writes data/lang/Francais.lng from the windows themselves.

The French texts live in the windows' code; this file is their copy for the
translators and for the language tests. Run after a window gains or changes a
caption:

    build/tarvokin-cli captions --lang 0 > /tmp/captions.txt
    scripts/make-french-language.py /tmp/captions.txt > data/lang/Francais.lng

The messages and questions come from src/core/messages.cpp. Values with blanks
at either end are written between quotes, which the profile reader removes.
"""
import re
import sys


def value(text):
    return '"' + text + '"' if text != text.strip() else text


def main():
    captions = open(sys.argv[1], encoding="utf-8").read().splitlines()
    source = open("src/core/messages.cpp", encoding="utf-8").read()
    out = ["; Textes français de TARVOKIN (UTF-8). Une section par fenêtre, puis les messages.",
           "; \\r : fin de ligne ; \\\\ : barre oblique inverse ; ** : place du détail d'un message."]
    sections = {}
    for line in captions:
        form, rest = line.split(".", 1)
        key, text = rest.split("=", 1)
        keys = sections.setdefault(form, {})
        if key in keys and keys[key] != text:
            sys.exit(f"{form}.{key}: two controls share a key with different texts")
        keys[key] = text
    for form, keys in sections.items():
        out.append(f"[{form}]")
        out.extend(f"{k}={value(v)}" for k, v in keys.items())
    for section, table in (("Messages", "kMessages"), ("AskFor", "kQuestions")):
        block = re.search(table + r"\[\] = \{(.*?)\n\};", source, re.S).group(1)
        out.append(f"[{section}]")
        for ident, text in re.findall(r'\{"(\[#\d+\])", "((?:[^"\\]|\\.)*)"\}', block):
            out.append(f"{ident}={value(text.encode().decode('unicode_escape').encode('latin-1').decode('utf-8'))}")
    sys.stdout.write("\r\n".join(out) + "\r\n")


main()
