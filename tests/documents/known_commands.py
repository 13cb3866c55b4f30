"""How the commands of the documents are run. To add one that cannot be run here, add a line to
ELSEWHERE with the test that runs it or the reason why none does."""

# A command that would wait for a person, need a card or take too long is run as another one. The
# first key that stands in a command decides; parts are replaced one by one.
INSTEAD: list[tuple[str, dict[str, str]]] = [
    # The image of the sample card in the place of a card, and no administrator to read it.
    ('--device /dev/sdb', {'sudo ': '', '/dev/sdb': 'card.img'}),
    ('dd if=/dev/sdb', {'sudo ': '', 'of=card.img': 'of=copy.img', '/dev/sdb': 'card.img'}),
    ('sudo chown -R "$USER": ~/Recovered', {'sudo ': ''}),
    ('-N 64 FILE', {'FILE': 'card.img'}),
    ('NORVO_SEEDS="1000000 200000"', {'1000000 200000': '1000000 20'}),
    ('tools/take_screenshots.py /tmp/shots', {'/tmp/shots': '--only small shots'}),
    ('--destination /tmp/found', {'/tmp/found': 'found'}),
    ("sed '$a </dfxml>' report.xml", {'report.xml': '~/Recovered/report.xml'}),
    ('--check-signatures DIR', {'DIR': 'build/release/share/norvo-recovery/signatures'}),
]

# Command, its beginning (then it ends in " ...") or a document, for all of its commands -> why this
# test does not run it. A word that ends in "_test" is a test that runs the same.
ELSEWHERE: dict[str, str] = {
    'docs/macos.md':
        'needs a Mac; macos_bundles_test, macos_icon_test and macos_signing_test hold what can be '
        'held elsewhere',
    './test': 'it runs this test',
    'tools/make_package': 'package_test installs what it makes, after the test make_package',
    'sudo apt install ./build/release/packages/norvo-recovery_*.deb':
        'package_test installs the package in a clean system',
    'sudo apt purge norvo-recovery': 'package_test removes it there',
    'sudo umount /dev/sdb1': 'there is no card; block_device_test searches devices',
    'sudo ddrescue /dev/sdb card.img card.map':
        'a tool of others for a failing drive, and there is none; slow_device_test and '
        'bad_sectors_test search such drives themselves',
    'kill -9': 'no command to be typed; report_test ends searches by it',
    'dch ...': 'asks a person what is new; package_test reads the version that the changelog gives',
    'build/fuzz/bin/signature_fuzz ...':
        'needs the fuzz build; its corpus is replayed by signature_fuzz_replay',
    'build/release/bin/damaged_pictures ...': 'damaged_pictures_test runs it with fewer variants',
    'build/release/bin/damaged_movies ...': 'damaged_movies_test runs it with fewer variants',
    'docs/speed.md':
        'takes minutes on an idle machine, and measures instead of testing; benchmarks_test runs each '
        'script once with the smallest sizes',
    'mkdir tried && ...': 'signature_example_test',
    'truncate -s 8M ...': 'signature_example_test',
    'norvo-recover --check-signatures tried': 'signature_example_test',
    'norvo-recover --device farbfeld.img ...': 'signature_example_test',
}
