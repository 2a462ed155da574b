// SPDX-License-Identifier: Apache-2.0
// What the server knows about names: where they are declared and used, what they may become, and
// what is said about them.
import assert from 'node:assert/strict';
import {readFileSync, writeFileSync} from 'node:fs';
import {test} from 'node:test';
import {fileURLToPath} from 'node:url';
import {Client, allAbilities} from './client.mjs';
import {Folder, manifest, module, rangeOf, textDocument} from './texts.mjs';

const kFailed = -32803;

const kClass = '2c9d0b1e-6f35-47a4-8a10-5be2f0c40004';
const kOther = '2c9d0b1e-6f35-47a4-8a10-5be2f0c40005';
const kHost = '7b1f64c0-52a8-4be1-9d3e-3a0c6f2d1001';

// A client half, stored; the service half and its host, open and never saved.
const stored = {
  'pack/halves.tmfx': manifest(
    module('ws.client'),
    `<class id="${kClass}" affinity="service"><clientside moduleref="ws.client"/></class>`),
  'pack/users.tmfx': manifest(
    `<module id="ws.log" name="m" loadpoint=""><!-- tarnmf: allow preload-not-acted-on -->
       <preload by="service" svcid="${kHost.replaceAll('-', '').toUpperCase()}"/></module>`,
    '<runnable moduleref="ws.server"/>'),
};
const unsaved = manifest(
  module('ws.server'), '<!-- é😀 -->' + module('ws.host').replace('/>', ' type="executable"/>'),
  `<class id="${kClass}" affinity="service" commonname="Store"><serviceside moduleref="ws.server"
     svcid="2c9d0b1e-6f35-47a4-8a10-5be2f0c40104" xsid="${kHost}"/></class>`,
  `<class id="${kOther}" affinity="service" commonname="Other"><serviceside moduleref="ws.server"
     svcid="2c9d0b1e-6f35-47a4-8a10-5be2f0c40105" xsname="Host"/></class>`,
  `<runnable moduleref="ws.host"><service id="${kHost}" commonname="Host"/></runnable>`);

async function started(capabilities = allAbilities) {
  const folder = new Folder(stored);
  const client = await Client.start({capabilities});
  const uri = folder.uri('pack/service.tmfx');
  client.open(uri, unsaved);
  await client.diagnostics(uri);
  const textOf = (each) => client.texts.get(each) ?? readFileSync(fileURLToPath(each), 'utf8');
  // "FILE: TEXT" of each place.
  const written = (locations) => locations.map(({uri: each, range}) =>
    `${each.slice(folder.uri('pack/').length)}: ${textDocument(textOf(each)).getText(range)}`);
  const store = (each, text) => writeFileSync(fileURLToPath(each), text);
  return {folder, client, uri, textOf, written, store};
}

test('names lead to their declarations and uses', async () => {
  const {folder, client, uri, written} = await started();
  const halves = folder.uri('pack/halves.tmfx');
  const compact = kHost.replaceAll('-', '').toUpperCase();
  const service = ['service.tmfx: ' + kHost];
  const cases = [
    // place, declarations, uses
    ['ws.server"\n', ['service.tmfx: ws.server'],
      ['service.tmfx: ws.server', 'service.tmfx: ws.server', 'users.tmfx: ws.server']],
    ['ws.host" name', ['service.tmfx: ws.host'], ['service.tmfx: ws.host']],
    ['ws.host">', ['service.tmfx: ws.host'], ['service.tmfx: ws.host']],
    [`${kHost}"/></class>`, service, ['service.tmfx: ' + kHost, 'users.tmfx: ' + compact]],
    ['Host"/>', ['service.tmfx: Host'], ['service.tmfx: Host']],
    [`${kClass}"`, ['halves.tmfx: ' + kClass], []],
  ];
  for (const [place, declarations, uses] of cases) {
    assert.deepEqual(written(await client.askAt('definition', uri, place)), declarations, place);
    const context = {includeDeclaration: false};
    const references = await client.askAt('references', uri, place, {context});
    assert.deepEqual(written(references).sort(), uses, place);
    const all = await client.askAt('references', uri, place, {context: {includeDeclaration: true}});
    assert.equal(all.length, uses.length + (place.startsWith(kClass) ? 2 : 1), place);
  }
  for (const place of ['<class', 'affinity', '-->', 'name="m"'])
    assert.equal(await client.askAt('definition', uri, place), null, place);
  client.open(halves, stored['pack/halves.tmfx']);
  assert.deepEqual(written(await client.askAt('definition', halves, kClass)),
    ['service.tmfx: ' + kClass]);
  client.replace(uri, manifest(module(kClass)));  // of another kind
  assert.deepEqual(written(await client.askAt('definition', uri, kClass)),
    ['service.tmfx: ' + kClass]);
  assert.deepEqual(await client.askAt('definition', halves, 'ws.client"/>'),
    [{uri: halves, range: rangeOf(client.texts.get(halves), 'ws.client')}]);
  await client.stop();
});

for (const [name, capabilities] of [['versions', allAbilities], ['plain edits', {}]]) {
  test(`modules are renamed in all files, with ${name}`, async () => {
    const {folder, client, uri, textOf, store} = await started(capabilities);
    const prepared = await client.askAt('prepareRename', uri, 'ws.server"\n');
    const range = rangeOf(unsaved, 'ws.server', unsaved.indexOf('moduleref'));
    assert.deepEqual(prepared, {range, placeholder: 'ws.server'});
    for (const place of [kHost, kClass, 'Host"', '<class'])
      assert.equal(await client.askAt('prepareRename', uri, place), null, place);

    const rename = (newName) => client.askAt('rename', uri, 'ws.server', {newName});
    for (const newName of ['ws.client', 'ws.log', 'ws.host', '', 'two\nlines'])
      await client.fails(rename(newName), kFailed);
    await client.fails(client.askAt('rename', uri, kHost, {newName: 'x'}), kFailed);

    client.apply(await rename('a<b&"é😀"'), textOf, store);
    for (const file of [uri, folder.uri('pack/users.tmfx')]) {
      assert.match(textOf(file), /moduleref="a&lt;b&amp;&quot;é😀&quot;"/);
      assert.doesNotMatch(textOf(file), /ws\.server/);
    }
    client.save(uri);
    await client.shows(uri, []);
    await client.request('workspace/symbol', {query: ''});  // all findings came before the answer
    for (const file of Object.keys(stored)) await client.shows(folder.uri(file), []);

    folder.write('pack/broken.tmfx', '<tarnmanifest version="1"><runnable moduleref="ws.host');
    client.save(uri);
    await client.shows(folder.uri('pack/broken.tmfx'), ['not-well-formed']);
    await client.fails(client.askAt('rename', uri, 'ws.host', {newName: 'ws.new'}), kFailed);
    await client.stop();
  });
}

test('symbols of a document and of all files are listed', async () => {
  const {folder, client, uri, written} = await started();
  const outline = ({name, children}) =>
    (children.length > 0 ? {[name]: children.map(outline)} : name);
  const symbols = await client.ask('documentSymbol', uri);
  assert.deepEqual(symbols.map(outline), ['ws.server', 'ws.host', {Store: ['serviceside']},
    {Other: ['serviceside']}, {'ws.host': ['Host']}]);
  const document = textDocument(unsaved);
  for (const {range, selectionRange} of symbols) {
    assert.match(document.getText(range), /^<(module|class|runnable) .*>$/s);
    assert.ok(document.offsetAt(range.start) <= document.offsetAt(selectionRange.start));
    assert.ok(document.offsetAt(range.end) >= document.offsetAt(selectionRange.end));
  }
  const found = async (query) => {
    const all = await client.request('workspace/symbol', {query});
    return written(all.map(({location}) => location)).sort();
  };
  assert.deepEqual(await found('wsCLI'), ['halves.tmfx: ws.client']);
  assert.deepEqual(await found('store'), ['service.tmfx: Store']);
  assert.deepEqual(await found('host'),
    ['service.tmfx: Host', 'service.tmfx: ws.host', 'service.tmfx: ws.host']);
  assert.ok((await found('')).length > 9);
  assert.deepEqual(await found('nothing like it'), []);
  await client.stop();

  const plain = await Client.start({capabilities: {}});
  plain.open(uri, unsaved);
  const flat = await plain.ask('documentSymbol', uri);
  assert.deepEqual(flat.map(({name, containerName}) => [name, containerName]), [
    ['ws.server', undefined], ['ws.host', undefined], ['Store', undefined],
    ['serviceside', 'Store'], ['Other', undefined], ['serviceside', 'Other'],
    ['ws.host', undefined], ['Host', 'ws.host']]);
  for (const {location} of flat) assert.equal(location.uri, folder.uri('pack/service.tmfx'));
  await plain.stop();
});

test('elements, attributes and names are explained', async () => {
  const {client, uri} = await started();
  const cases = [
    // place, what is explained, what is said
    ['serviceside', 'serviceside', /serviceside/],
    ['affinity', 'affinity', /generic/],
    ['xsname', 'xsname', /Value:/],
    [`${kHost}"/></class>`, kHost, /Declared in service\.tmfx, line \d+\.\s+Referred to 2 times\./],
    ['ws.server"\n', 'ws.server',
      /module "ws\.server"\s+Declared in service\.tmfx, line 2\.\s+Referred to 3 times\./],
    ['é😀 -->', null, null],
  ];
  for (const [place, explained, said] of cases) {
    const hover = await client.askAt('hover', uri, place);
    if (said === null) {
      assert.equal(hover, null, place);
      continue;
    }
    assert.ok(hover, place);
    assert.equal(hover.contents.kind, 'markdown');
    assert.match(hover.contents.value, said);
    assert.equal(textDocument(unsaved).getText(hover.range), explained);
  }
  await client.stop();
});
