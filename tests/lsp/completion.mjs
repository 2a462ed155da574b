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

test('elements, attributes and values are completed where they are admitted', async () => {
  const folder = new Folder({'pack/stored.tmfx': stored});
  const uri = folder.uri('pack/new.tmfx');
  const has = (labels, wanted, unwanted) => {
    for (const each of wanted) assert.ok(labels.includes(each), `${each} is not among ${labels}`);
    for (const each of unwanted) assert.ok(!labels.includes(each), `${each} is among ${labels}`);
  };
  for (const capabilities of [allAbilities, {}]) {
    const client = await Client.start({capabilities});
    client.open(uri, '');
    const at = (text) => offers(client, uri, text);

    // Elements, of which some stand only once.
    has((await at('<|')).labels, ['tarnmanifest', 'tarnmodulemanifest'], ['module']);
    const root = await at(manifest('<mod|'));
    has(root.labels, ['module', 'modules', 'class', 'runnable'], ['preload', 'clientside']);
    if (capabilities === allAbilities)
      assert.match(root.take('module', 'x'), /<module id="x" name="x"/);
    has((await at(manifest('<class id="" affinity="service"><clientside/><|</class>'))).labels,
      ['serviceside', 'agentside'], ['clientside', 'module']);
    has((await at('<tarnmanifest version="1"><modules></|')).labels,
      ['</modules>'], ['</tarnmanifest>']);

    // Attributes that are not given yet, in whatever letter case; ids, a fresh one among them.
    has((await at(manifest('<module ID="é😀" na|/>'))).labels,
      ['name', 'path', 'type'], ['id', 'moduleref']);
    has((await at(manifest('<runnable moduleref="ws.|"/>'))).labels, ['ws.host'], [kHost]);
    const appClass = (id, moduleref) =>
      manifest(`<class id="${id}" affinity="app"><clientside moduleref="${moduleref}"/></class>`);
    const module = await at(appClass(kHost, 'ws.|'));
    client.replace(uri, module.take('ws.codecs'));
    await client.shows(uri, []);
    const fresh = await at(appClass('|', 'ws.codecs'));
    const id = fresh.labels.find((label) => kId.test(label));
    client.replace(uri, fresh.take(id));
    await client.shows(uri, []);
    const again = await at(appClass('|', 'ws.codecs'));
    assert.ok(!again.labels.includes(id));
    const host = await at(manifest(
      `<class id="${id}" affinity="service" commonname="A">`,
      `  <serviceside moduleref="ws.codecs" svcid="${id}" xsid="|"/></class>`));
    const label = host.labels.find((each) => host.take(each).includes(`xsid="${kHost}"`));
    assert.ok(label, `the service is not among ${host.labels}`);
    client.replace(uri, host.take(label));
    await client.shows(uri, []);
    assert.deepEqual((await at('<!-- <|')).labels, []);
    await client.stop();
  }
});
