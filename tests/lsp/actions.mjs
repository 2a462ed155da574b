// SPDX-License-Identifier: Apache-2.0
// Whether what is offered to do about findings does away with them. The findings are those of the
// wrong examples of the catalogue.
import assert from 'node:assert/strict';
import {execFileSync, spawnSync} from 'node:child_process';
import {readFileSync} from 'node:fs';
import {test} from 'node:test';
import {fileURLToPath} from 'node:url';
import {Client} from './client.mjs';
import {Folder, manifest, rangeOf} from './texts.mjs';

// One {rule, isError, args, files} for each section of the catalogue that has an example.
function catalogue() {
  const page = execFileSync(process.env.TARNMF_TOOL, ['explain', '--page'], {encoding: 'utf8'});
  return page.split(/^## /m).slice(1).flatMap((section) => {
    const [, rule, severity] = section.match(/^(\S+)\n\n\*(\w+)/);
    const example = section.match(/^Wrong:\n\n```\w*\n(.*?)^```$/ms)?.[1];
    return example ? [{rule, isError: severity === 'error', ...installation(example)}] : [];
  });
}

function installation(example) {
  const args = example.match(/^\$ (.*)\n/)?.[1].split(' ') ?? [];
  const files = {};
  const [bare, ...parts] = example.replace(/^\$ .*\n/, '').split(/^== /m);
  for (const part of parts) files[part.match(/^.*/)[0]] = part.replace(/^.*\n/, '');
  const hasRoot = /<tarn|<\?xml/.test(bare);
  if (parts.length === 0) files['pack/example.tmfx'] = hasRoot ? bare : manifest(bare.trimEnd());
  return {args, files};
}

// Opens every file of an example. Returns the client, the document that shows the finding, the
// finding, and what the command line suggests for it.
async function opened({rule, args, files}) {
  const folder = new Folder(files);
  const given = args.map((arg) => (arg.startsWith('--') ? arg : folder.at(arg)));
  const {stdout} = spawnSync(process.env.TARNMF_TOOL,
    ['check', '--json', ...(given.length > 0 ? given : [folder.at('pack')])], {encoding: 'utf8'});
  const {suggestions} = JSON.parse(stdout).find((each) => each.rule === rule);
  const client = await Client.start({args: given});
  const served = Object.keys(files).filter((name) => /\.tmfx$|\.installed$/.test(name))
    .map((name) => folder.uri(name));
  for (const uri of served) client.open(uri, readFileSync(fileURLToPath(uri), 'utf8'));
  const [uri, finding] = await client.eventually(() => {
    const found = served.map((each) => [each, findings(client, each, rule)[0]])
      .find(([, first]) => first);
    assert.ok(found, `${rule} is not found`);
    return found;
  });
  return {client, uri, finding, suggestions};
}

// Those of the document as it is now.
function findings(client, uri, rule) {
  const {version, diagnostics} = client.published.get(uri) ?? {};
  assert.ok(version >= client.versions.get(uri), `no diagnostics of ${uri}`);
  return diagnostics.filter(({code}) => code === rule);
}

function actionsFor(client, uri, range, only) {
  return client.ask('codeAction', uri, {range, context: {diagnostics: [], only}});
}

// The last line feed of an example in print is not one of the file.
const examples = catalogue();
const layout = examples.find(({rule}) => rule === 'line-not-ended').files;
layout['pack/.installed'] = layout['pack/.installed'].trimEnd();
// What is found about a directory without manifests stands in no file.
const shown = examples.filter(({rule}) => rule !== 'no-manifests');

// A few at a time: most of it is waiting.
async function forEach(all, callback) {
  for (let i = 0; i < all.length; i += 8) await Promise.all(all.slice(i, i + 8).map(callback));
}

test('what check suggests can be applied, one by one or all that is certain', async () => {
  let applied = 0;
  await forEach(shown, async (example) => {
    const {rule} = example;
    const {client, uri, finding, suggestions} = await opened(example);
    const text = client.texts.get(uri);
    const offered = async () => (await actionsFor(client, uri, finding.range, ['quickfix'])).filter(
      ({title, diagnostics: [{code}]}) => code === rule && !title.startsWith('Allow '));
    const isGone = () => assert.deepEqual(findings(client, uri, rule), [], rule);
    assert.deepEqual(
      (await offered()).map(({title, isPreferred = false}) => ({title, isPreferred})),
      suggestions.map(({title, safe}) => ({title, isPreferred: safe})), rule);
    for (let i = 0; i < suggestions.length; ++i) {
      const {kind, edit, diagnostics} = (await offered())[i];
      assert.equal(kind, 'quickfix');
      assert.deepEqual(diagnostics, [finding]);
      client.apply(edit);
      await client.eventually(isGone);
      client.replace(uri, text);
      ++applied;
    }
    const all = await actionsFor(client, uri, rangeOf(text, text), ['source.fixAll']);
    assert.deepEqual(all.map(({kind}) => kind),
      suggestions.some(({safe}) => safe) ? ['source.fixAll.tarnmf'] : [], rule);
    for (const {edit} of all) {
      client.apply(edit);
      await client.eventually(isGone);
    }
    await client.stop();
  });
  assert.ok(applied > 15, `${applied} applied`);
});

test('what the library accepts can be allowed where it stands', async () => {
  await forEach(shown.filter(({isError}) => !isError), async (example) => {
    const {rule} = example;
    const {client, uri, finding} = await opened(example);
    const before = client.published.get(uri).diagnostics.map(({code}) => code);
    const actions = await actionsFor(client, uri, finding.range, ['quickfix']);
    const allowances = actions.filter(({title}) => title === `Allow ${rule} here`);
    assert.equal(allowances.length, 1, rule);
    for (const {edit} of allowances) {
      client.apply(edit);
      await client.shows(uri, before.filter((each) => each !== rule));
    }
    await client.stop();
  });
});

test('places of a layout file that begins with a byte order mark', async () => {
  const text = '\uFEFF# of the old machines\nbitz = 3\n';
  const folder = new Folder({'pack/.installed': text, 'pack/a.tmfx': manifest('')});
  const uri = folder.uri('pack/.installed');
  const client = await Client.start();
  client.open(uri, text);
  const {start} = await client.eventually(() => {
    const [, finding] = client.published.get(uri)?.diagnostics ?? [];
    assert.equal(finding?.range.start.line, 1);
    return finding.range;
  });
  assert.notDeepEqual(await actionsFor(client, uri, {start, end: start}, ['quickfix']), []);
  await client.stop();
});
