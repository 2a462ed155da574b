#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Does what a page of the documentation says: runs its commands and programs, holds what it shows as
their output against what they write, its synopses against the tool's help, and follows its links.

The word behind a fence says what a block is (KINDS); a block without a known word is a fault. Commands
of one page run one after the other in one folder, where `build/demo` is what scripts/demo makes. Behind
the kind, `status=N` is the exit status of the last command of the block, and a block with `needs=PROGRAM`
is left out where there is no such program; the exit status of all is 77 then.
"""
import argparse
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

FENCE = re.compile(r'^( *)```(.*)\n((?:.*\n)*?) *```$', re.MULTILINE)
SHOWN_TREE = '/src/tarnmf'  # where the source tree lies on the pages
FRAGMENT = '''#include "tarnmf/tarnmf.h"
#include "platform/host/btkhost.h"
#include "platform/host/embedded_dlm.h"
#include "platform/host/embedded_services.h"
BtkErrorT Fragment();
BtkErrorT Fragment() {
%s
return kBtkOk;
}
'''


class Page:
    def __init__(self, path, options, work):
        self.path, self.options, self.work = path, options, work
        self.text = path.read_text(encoding='utf-8')
        self.folder, self.environment = str(work), dict(os.environ)
        self.counts, self.missing = {}, set()
        demo = work / 'build' / 'demo'
        demo.mkdir(parents=True)
        for name in ('bin', options.lib.name):
            (demo / name).symlink_to(options.build / name)
        shutil.copytree(options.build / 'samples', demo / 'samples',
                        ignore=shutil.ignore_patterns('CMakeFiles', '*.cmake'))

    def run(self):
        blocks = list(FENCE.finditer(self.text))
        self.check_that_all_fences_are_read(blocks)
        for block, following in zip(blocks, blocks[1:] + [None]):
            self.line = self.text.count('\n', 0, block.start()) + 1
            kind = ' '.join(word for word in block[2].split() if '=' not in word)
            more = dict(word.split('=', 1) for word in block[2].split() if '=' in word)
            if not block[2] and (self.options.bare or self.stands_below_mark(block)):
                continue
            if kind not in KINDS or more.keys() - {'status', 'needs'}:
                self.fail(f'no test knows what "```{block[2]}" is')
            self.counts[kind] = self.counts.get(kind, 0) + 1
            if 'needs' in more and not shutil.which(more['needs']):
                self.missing.add(more['needs'])
                continue
            body = ''.join(line.removeprefix(block[1]) for line in block[3].splitlines(True))
            shown = following[3] if following and following[2] == 'output' else None
            KINDS[kind](self, body, int(more.get('status', 0)), shown)
        self.follow_links()
        print(self.path.name, self.counts)
        if self.missing:
            print('skipped:', ', '.join(self.missing), 'not installed')
            sys.exit(77)

    def fail(self, message):
        sys.exit(f'{self.path}:{self.line}: {message}')

    def check_that_all_fences_are_read(self, blocks):
        self.line = 1
        if len(re.findall(r'^ *```', self.text, re.MULTILINE)) != 2 * len(blocks):
            self.fail('a fence is not closed')

    def stands_below_mark(self, block):
        # The editors of tests/editors write and compare this one.
        return self.text[:block.start()].rstrip().endswith('<!-- session -->')

    def shell(self, command, status):
        """Runs one command; the current folder and PATH are kept for the next one."""
        state = self.work / 'state'
        script = f'trap \'printf "%s\\n" "$PWD" "$PATH" >{state}\' EXIT\n{command}\n'
        done = subprocess.run(['bash', '-c', script], cwd=self.folder, env=self.environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, text=True, timeout=120)
        self.folder, self.environment['PATH'] = state.read_text().splitlines()
        if done.returncode != status:
            self.fail(f'status {done.returncode}, not {status}: {command}\n{done.stdout}')
        return done.stdout

    def is_whole(self, command):
        checked = subprocess.run(['bash', '-n', '-c', command], capture_output=True)
        return not command.endswith('\\') and not checked.returncode and not checked.stderr

    def commands(self, lines):
        """Several lines are one command where the first alone is none."""
        command = ''
        for line in lines:
            command = f'{command}\n{line}' if command else line
            if command.strip() and self.is_whole(command):
                yield command
                command = ''
        if command.strip():
            self.fail(f'no whole command: {command}')

    def run_commands(self, body, status, shown):
        commands = list(self.commands(body.splitlines()))
        for command in commands:
            written = self.shell(command, status if command is commands[-1] else 0)
        if shown is not None:
            self.compare(written, shown)

    def run_console(self, body, status, _):
        """A command follows "$ " and goes on behind "> "; then comes all that it writes."""
        parts = re.findall(r'^\$ (.*\n(?:> .*\n)*)((?:(?!\$ ).*\n)*)', body, re.MULTILINE)
        if ''.join('$ ' + command + output for command, output in parts) != body:
            self.fail('a console begins with "$ "')
        for number, (command, output) in enumerate(parts, 1):
            command = command.replace('\n> ', '\n').rstrip('\n')
            self.compare(self.shell(command, status if number == len(parts) else 0), output)

    def compare(self, written, shown):
        written = written.replace(str(self.work), SHOWN_TREE)
        if written != shown:
            self.fail(f'the page shows:\n{shown}it is:\n{written}')

    def compile(self, text, *arguments):
        source = self.work / f'line{self.line}.cpp'
        source.write_text(text)
        options = self.options
        done = subprocess.run([options.cxx, '-std=c++20', '-Wall', '-Wextra', '-Werror',
                               *shlex.split(options.flags), f'-I{options.sources}',
                               f'-I{options.sources}/include', str(source), *arguments])
        if done.returncode:
            self.fail('this does not compile')

    def run_program(self, body, status, shown):
        program = self.work / f'line{self.line}'
        if not re.search(r'\bint main\(', body):
            self.fail('a program has a main; "cpp body" are statements, "cpp excerpt" our sources')
        self.compile(body, '-o', str(program), f'-L{self.options.lib}', '-ltarnmf', '-lbtkhost',
                     f'-Wl,-rpath,{self.options.lib}')
        done = subprocess.run([str(program)], cwd=self.folder, stdout=subprocess.PIPE, text=True,
                              timeout=120)
        if done.returncode != status:
            self.fail(f'status {done.returncode}, not {status}')
        if shown is not None:
            self.compare(done.stdout, shown)

    def compile_body(self, body, *_):
        self.compile(FRAGMENT % body, '-fsyntax-only')

    def find_excerpt(self, body, *_):
        wanted = ' '.join(body.split())
        folders = ('include', 'platform', 'xml', 'ldp', 'publish', 'repository', 'check', 'tools')
        for folder in folders:
            for source in (self.options.sources / folder).rglob('*.[ch]*'):
                if wanted in ' '.join(source.read_text(encoding='utf-8').split()):
                    return
        self.fail('this stands in no source')

    def hold_against_help(self, body, *_):
        for synopsis in re.findall(r'^tarnmf.*\n(?:[ ]+.*\n)*', body, re.MULTILINE):
            words = re.match(r'tarnmf((?: [a-z]+(?![a-z|./]))*)', synopsis)[1].split()
            help_text = subprocess.run([self.options.build / 'bin' / 'tarnmf', *words, '--help'],
                                       check=True, capture_output=True, text=True).stdout
            known, named = (set(re.findall(r'--[a-z][a-z-]*', text)) for text in
                            (help_text, synopsis.partition('#')[0]))
            if named - known:
                self.fail(f'tarnmf {" ".join(words)} has no {" ".join(named - known)}')
            left_out = known - named - {'--help'}
            # A line that ends in " ..." leaves out what several commands share.
            if left_out and not synopsis.rstrip().endswith(' ...') and not '#' in synopsis:
                self.fail(f'tarnmf {" ".join(words)} also has {" ".join(left_out)}')

    def need_program_before(self, *_):
        before = self.text.splitlines()[:self.line - 1]
        while before and not before[-1].startswith('```'):
            if before.pop().strip():
                self.fail('output stands directly below the block that writes it')

    def follow_links(self):
        prose = FENCE.sub('', self.text)
        for link in re.findall(r'\]\(([^)\s]+)\)', prose):
            if re.match(r'[a-z]+:', link):
                continue
            file, _, anchor = link.partition('#')
            target = (self.path.parent / file) if file else self.path
            if not target.exists():
                sys.exit(f'{self.path}: the link {link} leads nowhere')
            if anchor and anchor not in anchors(target.read_text(encoding='utf-8')):
                sys.exit(f'{self.path}: {link} has no such heading')


def anchors(text):
    """Names of headings, as they are made on the sites that show these pages."""
    headings = re.findall(r'^#+ (.*)$', FENCE.sub('', text), re.MULTILINE)
    return {re.sub(r'[^\w\- ]', '', heading.lower()).replace(' ', '-') for heading in headings}


def only_shown(*_):
    pass


KINDS = {
    'sh': Page.run_commands,
    'console': Page.run_console,
    'output': Page.need_program_before,  # compared when the block above is run
    'cpp': Page.run_program,
    'cpp body': Page.compile_body,
    'cpp excerpt': Page.find_excerpt,
    'synopsis': Page.hold_against_help,
    # Build the tree, or another one, and run its tests: they would run this test, too, and take long.
    'build': only_shown,
    # Settings of editors: tests/editors drives those that it has, the pages tell the others apart.
    'lua': only_shown,
    'elisp': only_shown,
    'js': only_shown,
    'json': only_shown,
    # Pieces of documents and layout files. Those in docs/rules.md are checked with their rules.
    'xml': only_shown,
    'text': only_shown,
}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('page', type=pathlib.Path)
    for name in ('sources', 'build', 'lib'):
        parser.add_argument(f'--{name}', type=pathlib.Path, required=True)
    parser.add_argument('--cxx', required=True)
    parser.add_argument('--flags', default='')
    parser.add_argument('--bare', action='store_true', help='fences without a word are passed over')
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as work:
        Page(options.page, options, pathlib.Path(work)).run()


main()
