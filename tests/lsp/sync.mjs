// SPDX-License-Identifier: Apache-2.0
// Whether the server's texts are those of the editor.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {Client, allAbilities} from './client.mjs';
import {Folder, applied, manifest, module, rangeOf, textDocument} from './texts.mjs';

const kMark = '\uFEFF';
const utf8 = {...allAbilities, general: {positionEncodings: ['utf-8', 'utf-16']}};

// The names of what is declared as they stand in the text at the ranges that the server tells.
async function namesIn(client, uri) {
  const document = textDocument(client.texts.get(uri));
  const named = (symbol) => [symbol, ...symbol.children.flatMap(named)];
  return (await client.ask('documentSymbol', uri)).flatMap(named)
    .map(({name, selectionRange}) => ({name, written: document.getText(selectionRange)}));
}

test('changes are made where the editor means them', async () => {
  const folder = new Folder();
  const client = await Client.start();
  const uri = folder.uri('pack/a.tmfx');
  const at = (line, character) => ({line, character});
  const first = manifest('<module id="a" name="m" loadpoint=""/>');
  const cases = [
    // text, range, replacement, what becomes of it
    ['ab\ncd\n', [at(0, 1), at(1, 1)], '-', 'a-d\n'],
    ['ab\r\ncd', [at(0, 2), at(1, 0)], '', 'abcd'],
    ['ab\rcd\re', [at(1, 0), at(2, 0)], 'x\n', 'ab\rx\ne'],
    ['ab\r\ncd', [at(0, 99), at(0, 99)], 'x', 'abx\r\ncd'],  // past the end of a line
    ['ab\ncd', [at(1, 1), at(0, 1)], 'x', 'axd'],  // the wrong way round
    ['😀é!', [at(0, 1), at(0, 1)], 'x', 'x😀é!'],  // within a surrogate pair
    ['😀é!', [at(0, 2), at(0, 3)], 'e', '😀e!'],
    [`${kMark}ab`, [at(0, 1), at(0, 2)], 'x', `${kMark}xb`],
    ['', [at(0, 0), at(0, 0)], 'x', 'x'],
  ];
  client.open(uri, '');
  for (const [before, [start, end], text, becomes] of cases) {
    // At last it is the id of a module, where each end of a line is read as a blank.
    const rest = '" name="m"/></tarnmanifest>';
    const beginning = '<tarnmanifest version="1"><module id="';
    const top = {start: at(0, 0), end: at(0, 0)};
    client.change(uri,
      [{text: before + rest}, {range: {start, end}, text}, {range: top, text: beginning}],
      {text: beginning + becomes + rest});
    assert.deepEqual(await namesIn(client, uri),
      [{name: becomes.replace(/\r\n|\r|\n/g, ' '), written: becomes}], JSON.stringify(before));
  }
  const pastTheEnd = {start: at(9, 0), end: at(9, 9)};
  client.change(uri, [{text: first}, {range: pastTheEnd, text: '<'}], {text: `${first}<`});
  await client.shows(uri, ['not-well-formed']);

  const changes = [{text: first}, {range: rangeOf(first, '"a"'), text: '"b"'},
    {range: rangeOf(first, '"m"'), text: '""'}];
  const text = first.replace('"a"', '"b"').replace('"m"', '""');
  client.change(uri, changes, {text, version: 1000});
  await client.shows(uri, ['empty-value']);
  assert.deepEqual(await namesIn(client, uri), [{name: 'b', written: 'b'}]);
  client.change(uri, [{text: first}], {version: 7});  // whatever the editor counts
  client.published.delete(uri);
  await client.shows(uri, []);
  client.close(uri);
  client.change(uri, [{text: first}], {version: 8});  // not open: nothing happens
  assert.equal(await client.ask('documentSymbol', uri), null);
  client.notify('textDocument/didChange', {textDocument: {uri}, contentChanges: [{}]});
  client.open(uri, first);
  client.change(uri, [{range: 7, text: ''}]);
  await client.eventually(
    () => assert.match(client.messages.join(), /didChange: a whole number is expected/));
  await client.stop();
});

for (const [name, capabilities] of [['UTF-16', allAbilities], ['UTF-8', utf8]]) {
  test(`positions are counted in ${name}`, async () => {
    const folder = new Folder();
    const client = await Client.start({capabilities});
    assert.equal(client.initialized.capabilities.positionEncoding, name.toLowerCase());
    const uri = folder.uri('pack/a.tmfx');
    const isUtf8 = capabilities === utf8;
    const units = (text) => (isUtf8 ? Buffer.byteLength(text) : text.length);
    const root = '<tarnmanifest version="1">';
    for (const before of [kMark + root, `${root}\r`, `${root}\n\r\n`]) {
      const line = `${before.match(/[^\r\n]*$/)[0]}<!-- é😀 --><module id="é😀" name="`;
      client.open(uri, `${before}<!-- é😀 --><module id="é😀" name=""/></tarnmanifest>`);
      const [{range}] = await client.shows(uri, ['empty-value']);
      const start = {line: before.match(/\r\n|\r|\n/g)?.length ?? 0, character: units(line)};
      assert.deepEqual(range, {start, end: start});
      const position = {...start, character: units(line) - '" name="'.length};
      const id = await client.ask('prepareRename', uri, {position});
      assert.equal(id.placeholder, 'é😀');
      client.close(uri);
      await client.shows(uri, []);
    }
    await client.stop();
  });
}

// Numbers that look random and are the same in every run.
function generator(seed) {
  return (below) => {
    seed = (Math.imul(seed, 1664525) + 1013904223) >>> 0;
    return Math.floor((seed / 2 ** 32) * below);
  };
}

test('random changes lead to what opening the final text finds', async () => {
  const random = generator(42);
  const anyOf = (choices) => choices[random(choices.length)];
  const id = () => anyOf(['é', '😀', 'a', 'b😀é', kMark]) + random(3);
  const part = () => anyOf([
    () => anyOf(['\n', '\r', '\r\n']),
    () => anyOf([' ', '<!-- 😀\r-->', 'é', '😀', kMark]),
    () => module(id()),
    () => `<module id="${id()}" naem="😀"/>`,
    () => `<runnable moduleref="${id()}"/>`,
  ])();
  const garbage = ['<', '"', '\r', '\n', '😀', '-->', `${kMark}é`, '</module>'];

  const folder = new Folder();
  const client = await Client.start();
  const uri = folder.uri('pack/a.tmfx');
  const head = `${kMark}<!-- 😀 --><tarnmanifest version="1">`;
  const parts = Array.from({length: 40}, part);
  const textOf = () => `${head}${parts.join('')}</tarnmanifest>`;
  client.open(uri, textOf());

  // Sends the replacement of a range of the text. A place within CR LF is none, so that all of it
  // is replaced then.
  const replace = (begin, end, replacement, count) => {
    const before = client.texts.get(uri);
    const splits = (at) => before.slice(at - 1, at + 1) === '\r\n';
    let text = replacement;
    if (splits(begin)) text = before[--begin] + text;
    if (splits(end)) text += before[end++];
    const document = textDocument(before);
    const range = {start: document.positionAt(begin), end: document.positionAt(end)};
    client.change(uri, [{range, text}], {text: applied(before, [{range, newText: text}])});
  };
  for (let i = 0; i < 250; ++i) {
    const at = random(parts.length + 1);
    const removed = Math.min(random(4), parts.length - at);
    const begin = head.length + parts.slice(0, at).join('').length;
    const end = begin + parts.slice(at, at + removed).join('').length;
    const added = Array.from({length: random(parts.length < 40 ? 5 : 3)}, part);
    parts.splice(at, removed, ...added);
    replace(begin, end, added.join(''));
    assert.equal(client.texts.get(uri), textOf());

    // At any character, or behind a carriage return, which alone ends a line but not before a feed.
    const whole = [...textOf()];
    const ends = [...textOf().matchAll(/\r/g)].map(({index}) => index + 1);
    const anywhere = whole.slice(0, random(whole.length + 1)).join('').length;
    const place = random(2) > 0 && ends.length > 0 ? anyOf(ends) : anywhere;
    const inserted = anyOf(garbage);
    replace(place, place, inserted);
    replace(place, place + inserted.length, '');
    assert.equal(client.texts.get(uri), textOf());
    if (i % 50 === 0) await client.diagnostics(uri);
  }
  const found = await client.diagnostics(uri);
  const rules = new Set(found.map(({code}) => code));
  for (const rule of ['attribute-unknown', 'duplicate-module', 'stray-text'])
    assert.ok(rules.has(rule), rule);
  const names = await namesIn(client, uri);
  assert.ok(names.length > 5);
  for (const {name, written} of names) assert.equal(name, written);

  const other = await Client.start();
  other.open(uri, textOf());
  assert.deepEqual(await other.diagnostics(uri), found);
  await Promise.all([client.stop(), other.stop()]);
});
