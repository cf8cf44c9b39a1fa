"""Makes the tables of emoji that the program reads, from the Unicode data that the system has.

A table is text: a line for what it is made of, then a line for each emoji in the order of emoji keyboards, without
those that only differ in skin tone. In English a line that begins with a tab begins a group. An emoji's line holds the
emoji, a blank, its name, and behind a tab what else finds it, each a blank before and a comma behind. There everything
is folded: see `folded`, which src/commandbar/EmojiTable.cpp does to a query in the same way. English becomes a source
of the program, each other language a file.
"""

import argparse
import re
import sys
import unicodedata
import xml.etree.ElementTree
import zlib
from pathlib import Path

MOST_BYTES = 3 * 1000 * 1000
SKIN_TONES = re.compile("[\U0001F3FB-\U0001F3FF]")
VARIANT = "\uFE0F"
INHERITED = "↑↑↑"
# Where the annotations of a language stand under another name.
RENAMED = {"zh_CN": "zh", "zh_SG": "zh", "zh_TW": "zh_Hant", "zh_HK": "zh_Hant_HK", "pt_BR": "pt"}
PARENTS = {"zh_Hant": None, "zh_Hant_HK": "zh_Hant", "nb": "no", "nn": "no", "sr_Latn": None, "en_GB": "en_001"}


def small(character):
    """Without case, as one character, which is what the toolkit does."""
    return next((c for c in (character.casefold(), character.lower()) if len(c) == 1), character)


def folded(text):
    """Without case, accents and signs; words with one blank between."""
    plain = (small(c) for c in unicodedata.normalize("NFKD", text) if not "\u0300" <= c <= "\u036F")
    words = "".join(c if unicodedata.category(c)[0] in "LMN" else " " for c in plain)
    return " ".join(words.replace("ß", "ss").split())


def emoji_of(path):
    """(emoji, name, group) in order."""
    group = ""
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.startswith("# group:"):
            group = line.partition(":")[2].strip()
        found = re.fullmatch(r"([0-9A-F ]+); fully-qualified\s+# \S+ E[0-9.]+ (.+)", line)
        if not found:
            continue
        emoji = "".join(chr(int(code, 16)) for code in found[1].split())
        if not SKIN_TONES.search(emoji):
            yield emoji, found[2], group


def annotations_of(folder, language):
    """Names and words by emoji, those of the language before those of the languages that it goes back to."""
    names, words = {}, {}
    at = RENAMED.get(language, language)
    is_known = False
    while at:
        for part in ("annotations", "annotationsDerived"):
            path = folder / part / f"{at}.xml"
            if not path.exists():
                continue
            is_known = True
            for each in xml.etree.ElementTree.parse(path).iter("annotation"):
                text = (each.text or "").strip()
                if not text or text == INHERITED:
                    continue
                emoji = each.get("cp").replace(VARIANT, "")
                if each.get("type") == "tts":
                    names.setdefault(emoji, text)
                else:
                    words.setdefault(emoji, [word.strip() for word in text.split("|")])
        at = PARENTS[at] if at in PARENTS else at.rpartition("_")[0]
    if not is_known:
        sys.exit(f"{folder} has no emoji names in the language {language}")
    return names, words


def row_of(emoji, name, words):
    name = " ".join(name.split())
    plain = folded(name)
    found = [] if plain == name else [plain]
    said = [plain]
    for word in map(folded, words):
        if word and not any(f" {word} " in f" {other} " for other in said):
            said.append(word)
            found.append(word)
    return f"{emoji} {name}\t" + "".join(f" {word}," for word in found)


def table_of(emoji, folder, language):
    names, words = annotations_of(folder, language)
    stamp = zlib.crc32(" ".join(each for each, _, _ in emoji).encode())
    lines = [f"emoji 1 {stamp:08x}"]
    shown = ""
    for each, english, group in emoji:
        if language == "en" and group != shown:
            shown = group
            lines.append("\t" + group)
        key = each.replace(VARIANT, "")
        # Emoji that are newer than the names keep what Unicode calls them.
        lines.append(row_of(each, names.get(key, english), words.get(key, [])))
    return "".join(line + "\n" for line in lines).encode()


def source_of(table):
    quoted = (line.replace("\\", "\\\\").replace('"', '\\"') for line in table.decode().splitlines())
    lines = "\n".join(f'    "{line}\\n"' for line in quoted)
    return (
        '#include "commandbar/EmojiWords.h"\n\nnamespace tarnwick {\n\n'
        f"const std::string_view kEnglishEmoji =\n{lines};\n\n}}  // namespace tarnwick\n"
    )


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("emoji_test", type=Path)
    arguments.add_argument("annotations", type=Path, help="the folder that holds annotations/ and annotationsDerived/")
    arguments.add_argument("source", type=Path, help="the source file for English")
    arguments.add_argument("tables", type=Path, nargs="*", help="a file for each other language, named …-LANGUAGE")
    asked = arguments.parse_args()

    emoji = list(emoji_of(asked.emoji_test))
    if not emoji:
        sys.exit(f"{asked.emoji_test} holds no emoji")
    english = table_of(emoji, asked.annotations, "en")
    tables = {path: table_of(emoji, asked.annotations, path.name.rpartition("-")[2]) for path in asked.tables}
    size = len(english) + sum(map(len, tables.values()))
    if size > MOST_BYTES:
        sys.exit(f"The tables of emoji are {size} bytes together; at most {MOST_BYTES} are wanted.")
    asked.source.write_text(source_of(english), encoding="utf-8")
    for path, table in tables.items():
        path.write_bytes(table)


main()
