// SPDX-License-Identifier: Apache-2.0
// Manifests, folders to serve them from, and what the protocol's package makes of positions.
import assert from 'node:assert/strict';
import {mkdirSync, mkdtempSync, realpathSync, rmSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {dirname, join} from 'node:path';
import {after} from 'node:test';
import {pathToFileURL} from 'node:url';
import {protocol} from './server.mjs';

// A folder of its own for one test, with files by their paths below it.
export class Folder {
  constructor(files = {}) {
    this.path = realpathSync(mkdtempSync(join(tmpdir(), 'tarnmf-lsp-')));
    after(() => rmSync(this.path, {recursive: true, force: true}));
    for (const [name, text] of Object.entries(files)) this.write(name, text);
  }
  at(name) {
    return join(this.path, name);
  }
  uri(name) {
    return pathToFileURL(this.at(name)).href;
  }
  write(name, text) {
    mkdirSync(dirname(this.at(name)), {recursive: true});
    writeFileSync(this.at(name), text);
  }
}

export function manifest(...elements) {
  const lines = elements.map((each) => `  ${each}\n`);
  return `<tarnmanifest version="1">\n${lines.join('')}</tarnmanifest>\n`;
}

// A module whose file nobody looks for.
export function module(id) {
  return `<module id="${id}" name="m" loadpoint=""/>`;
}

export function textDocument(text) {
  return protocol.TextDocument.create('file:///text', 'xml', 1, text);
}
export function applied(text, edits) {
  return protocol.TextDocument.applyEdits(textDocument(text), edits);
}
export function rangeOf(text, part, from = 0) {
  const begin = text.indexOf(part, from);
  assert.notEqual(begin, -1, `"${part}" does not stand in: ${text}`);
  const document = textDocument(text);
  return {start: document.positionAt(begin), end: document.positionAt(begin + part.length)};
}
