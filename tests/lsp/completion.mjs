// SPDX-License-Identifier: Apache-2.0
// Whether what is offered to write next can be written.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {Client, allAbilities} from './client.mjs';
import {Folder, applied, manifest, module, rangeOf} from './texts.mjs';

const kId = /^[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}$/;
const kHost = '7b1f64c0-52a8-4be1-9d3e-3a0c6f2d1001';
const stored = manifest(
  module('ws.codecs'), module('ws.host').replace('/>', ' type="executable"/>'),
  `<runnable moduleref="ws.host"><service id="${kHost}" commonname="Host"/></runnable>`);

// The text of a snippet with its places filled, each with what it proposes or else with `filling`.
function filled(snippet, filling) {
  return snippet.replace(/\$\{\d+:([^}]*)\}/g, '$1').replace(/\$\{\d+\|([^,|}]*)[^}]*\}/g, '$1')
    .replace(/\$\d+|\$\{\d+\}/g, filling).replace(/\\([$}\\])/g, '$1');
}

// What is offered at the "|" of the text. Takes one of it by its label, and returns the text then.
async function offers(client, uri, text) {
  const marked = rangeOf(text, '|');
  const whole = text.replace('|', '');
  client.replace(uri, whole);
  const items = await client.ask('completion', uri, {position: marked.start});
  const labels = items.map(({label}) => label);
  const sorting = items.map(({sortText}) => sortText);
  assert.deepEqual(sorting, [...sorting].sort());
  for (const {textEdit} of items) {
    assert.equal(textEdit.range.start.line, marked.start.line);
    assert.ok(textEdit.range.start.character <= marked.start.character);
    assert.ok(textEdit.range.end.character >= marked.start.character);
  }
  const take = (label, filling = '') => {
    const item = items.find((each) => each.label === label);
    assert.ok(item, `${label} is not among ${labels}`);
    const {range, newText} = item.textEdit;
    const isSnippet = item.insertTextFormat === 2;
    return applied(whole, [{range, newText: isSnippet ? filled(newText, filling) : newText}]);
  };
  return {labels, take};
}

test('elements and ids, those of other files too, are completed as the editor takes them', async () => {
  const folder = new Folder({'pack/stored.tmfx': stored});
  const uri = folder.uri('pack/new.tmfx');
  for (const capabilities of [allAbilities, {}]) {
    const client = await Client.start({capabilities});
    client.open(uri, '');
    const at = (text) => offers(client, uri, text);

    const element = (await at(manifest('<!-- é😀 --><mod|'))).take('module', 'x');
    const isSnippet = capabilities === allAbilities;
    assert.match(element, isSnippet ? /--><module id="x" name="x"/ : /--><module id="" name=""/);

    // Ids, of other files and a fresh one.
    const appClass = (id, moduleref) =>
      manifest(`<class id="${id}" affinity="app"><clientside moduleref="${moduleref}"/></class>`);
    const module = await at(appClass(kHost, 'ws.|'));
    client.replace(uri, module.take('ws.codecs'));
    await client.shows(uri, []);
    const fresh = await at(appClass('|', 'ws.codecs'));
    const id = fresh.labels.find((label) => kId.test(label));
    client.replace(uri, fresh.take(id));
    await client.shows(uri, []);
    const host = await at(manifest(
      `<class id="${id}" affinity="service" commonname="A">`,
      `  <serviceside moduleref="ws.codecs" svcid="${id}" xsid="|"/></class>`));
    const label = host.labels.find((each) => host.take(each).includes(`xsid="${kHost}"`));
    assert.ok(label, `the service is not among ${host.labels}`);
    client.replace(uri, host.take(label));
    await client.shows(uri, []);
    await client.stop();
  }
});
