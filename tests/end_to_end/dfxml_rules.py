"""The rules for a DFXML report that readers of such reports rely on, and what a report says.

These are the rules as this program keeps them, written down apart from it; the published schema is
not part of the system's packages.
"""
import re
import xml.etree.ElementTree as ET
from dataclasses import dataclass, field

DFXML = '{http://www.forensicswiki.org/wiki/Category:Digital_Forensics_XML}'
DUBLIN_CORE = '{http://purl.org/dc/elements/1.1/}'
NORVO = '{https://norvo.example/report}'
EXECUTION = ['os_sysname', 'os_release', 'os_version', 'host', 'arch', 'command_line', 'uid',
             'username', 'start_time']
SOURCE = ['image_filename', 'image_size', 'device_sectorsize', 'device_sectors']


@dataclass
class ReportedRun:
    offset: int
    length: int
    img_offset: int | None  # none for bytes that stand in for sectors that could not be read
    repeats: int | None = None  # for those: where the sector lies that each of theirs repeats


@dataclass
class ReportedFile:
    filename: str
    size: int
    sha256: str
    search: str
    runs: list[ReportedRun] = field(default_factory=list)

    def bytes_on(self, image: bytes) -> bytes:
        """What the image holds at the runs, with the repetitions that stand in for unread places."""
        parts = []
        for run in self.runs:
            if run.img_offset is not None:
                parts.append(image[run.img_offset:run.img_offset + run.length])
            else:
                assert run.repeats is not None, 'nothing to repeat'
                parts.append(image[run.repeats:run.repeats + 512] * (run.length // 512))
        return b''.join(parts)


class BrokenRule(Exception):
    pass


def demand(condition: bool, rule: str) -> None:
    if not condition:
        raise BrokenRule(rule)


def text_of(parent: ET.Element, name: str) -> str:
    found = parent.findall(name)
    demand(len(found) == 1, f'one {name} in {parent.tag}')
    demand(len(found[0]) == 0, f'{name} holds text only')
    return found[0].text or ''


def number(text: str | None) -> int:
    demand(bool(text and re.fullmatch(r'\d+', text)), f'{text!r} is no number')
    return int(text or '')


def check_names(parent: ET.Element, names: list[str]) -> None:
    demand([child.tag for child in parent] == [DFXML + name for name in names],
           f'the children of {parent.tag}')


def check_head(root: ET.Element) -> None:
    demand(root.tag == DFXML + 'dfxml', 'the root element')
    demand(root.attrib == {'version': '1.2.0'}, 'version 1.2.0')
    demand([child.tag for child in root][:3] ==
           [DFXML + name for name in ('metadata', 'creator', 'source')], 'what stands first')
    demand(text_of(root[0], DUBLIN_CORE + 'type') == 'Carve Report', 'the kind of report')
    check_names(root[1], ['program', 'version', 'build_environment', 'execution_environment'])
    demand(text_of(root[1], DFXML + 'program') == 'norvo-recover', 'the program')
    demand(bool(re.fullmatch(r'\d+\.\d+\.\d+', text_of(root[1], DFXML + 'version'))), 'its version')
    check_names(root[1][2], ['compiler'])
    check_names(root[1][3], EXECUTION)
    number(text_of(root[1][3], DFXML + 'uid'))
    demand(bool(re.fullmatch(r'\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ',
                             text_of(root[1][3], DFXML + 'start_time'))), 'the time of the start')
    check_names(root[2], SOURCE)
    demand(number(text_of(root[2], DFXML + 'image_size')) ==
           number(text_of(root[2], DFXML + 'device_sectorsize')) *
           number(text_of(root[2], DFXML + 'device_sectors')), 'the size of the source')


def read_runs(node: ET.Element) -> list[ReportedRun]:
    runs = []
    at = 0
    for run in node:
        demand(run.tag == DFXML + 'byte_run' and len(run) == 0, 'byte_runs holds byte_run')
        demand({'offset', 'len'} <= set(run.attrib) <= {'offset', 'img_offset', 'len'},
               'the attributes of a byte_run')
        image = run.get('img_offset')
        read = ReportedRun(number(run.get('offset')), number(run.get('len')),
                           None if image is None else number(image))
        demand(read.offset == at and read.length > 0, 'one run after the other')
        at += read.length
        runs.append(read)
    return runs


def read_file(node: ET.Element) -> ReportedFile:
    demand(node.tag == DFXML + 'fileobject', 'files stand behind the source')
    own = [child.tag for child in node if child.tag.startswith(NORVO)]
    demand([child.tag for child in node] ==
           [DFXML + name for name in ('filename', 'filesize', 'byte_runs', 'hashdigest')] + own,
           'the children of a fileobject')
    demand(own[:1] == [NORVO + 'search'] and set(own[1:]) <= {NORVO + 'unread'}, 'own elements last')
    digest = node[3]
    demand(digest.attrib == {'type': 'sha256'}, 'the kind of digest')
    demand(bool(re.fullmatch('[0-9a-f]{64}', digest.text or '')), 'a digest of 64 digits')
    file = ReportedFile(text_of(node, DFXML + 'filename'),
                        number(text_of(node, DFXML + 'filesize')), digest.text or '',
                        text_of(node, NORVO + 'search'), read_runs(node[2]))
    demand(sum(run.length for run in file.runs) == file.size, 'runs make up the whole file')
    unread = node.findall(NORVO + 'unread')
    missing = [run for run in file.runs if run.img_offset is None]
    demand([(number(u.get('offset')), number(u.get('len'))) for u in unread] ==
           [(run.offset, run.length) for run in missing], 'unread runs are named')
    for run, element in zip(missing, unread):
        repeats = element.get('repeats')
        run.repeats = None if repeats is None else number(repeats)
    return file


def read_report(text: str | bytes) -> list[ReportedFile]:
    """The files of a whole report, after all rules were checked. Raises BrokenRule or ParseError."""
    root = ET.fromstring(text)
    check_head(root)
    return [read_file(node) for node in root[3:]]


def read_report_of_a_broken_search(text: str) -> list[ReportedFile]:
    """As docs/report.md says: up to the last whole file, and then the end."""
    last = text.rindex('</fileobject>') + len('</fileobject>')
    return read_report((text[:last] + '\n</dfxml>\n').encode())
