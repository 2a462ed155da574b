// SPDX-License-Identifier: Apache-2.0
// What the editor shows of the findings, and what makes them anew.
import assert from 'node:assert/strict';
import {symlinkSync, unlinkSync} from 'node:fs';
import {test} from 'node:test';
import {Client} from './client.mjs';
import {soon} from './server.mjs';
import {Folder, manifest, module, rangeOf} from './texts.mjs';

const kClass = '11111111-1111-4111-8111-111111111111';
function appClass(moduleref) {
  return `<class id="${kClass}" affinity="app"><clientside moduleref="${moduleref}"/></class>`;
}
const broken = manifest('<module id="ws.x" name="m" loadpoint="" abits="65"/>');
const kChanged = 2;  // what has become of a file

test('a change is seen in every file of the load point', async () => {
  const folder = new Folder({
    'pack/modules.tmfx': manifest(module('ws.a')),
    'pack/classes.tmfx': manifest(appClass('ws.a')),
    'pack/other.tmfx': broken,
    'elsewhere/modules.tmfx': broken,  // not of a load point that is open
  });
  const [modules, classes, other, fresh] =
    ['modules', 'classes', 'other', 'new'].map((name) => folder.uri(`pack/${name}.tmfx`));
  const client = await Client.start();
  client.open(modules, manifest(module('ws.a')), 5);
  await client.shows(modules, []);
  assert.equal(client.published.get(modules).version, 5);
  const [number] = await client.shows(other, ['bad-number']);
  assert.deepEqual({...number, message: ''}, {
    range: rangeOf(broken, '65'),
    severity: 1, code: 'bad-number', source: 'tarnmf', message: '', data: {code: 432},
  });
  assert.ok(!('version' in client.published.get(other)));
  assert.ok(!client.published.has(classes));

  client.replace(modules, manifest(module('ws.b')));
  const [unknown] = await client.shows(classes, ['module-unknown']);
  assert.match(unknown.message, /ws\.a/);
  client.replace(modules, manifest(module('ws.a'), module('ws.a')));
  const [twice] = await client.shows(modules, ['duplicate-module']);
  await client.shows(classes, []);
  assert.equal(twice.relatedInformation.length, 1);
  const [{location}] = twice.relatedInformation;
  assert.deepEqual([location.uri, location.range.start.line], [modules, 1]);

  // A file that is not stored, until it is closed.
  client.replace(modules, manifest());
  client.open(fresh, manifest(module('ws.a')));
  await client.shows(fresh, []);
  await client.shows(classes, []);
  client.close(fresh);
  await client.shows(classes, ['module-unknown']);
  client.open(other, broken);
  client.close(modules);  // what is stored counts again
  await client.shows(classes, []);
  client.close(other);  // nothing of the load point is open any more
  await client.shows(other, []);
  const shown = [modules, classes, other, fresh];
  assert.deepEqual([...client.published.keys()].sort(), shown.sort());
  await client.stop();
});

test('files are answered for under the URI that the editor uses', async () => {
  const folder = new Folder({'real é/a.tmfx': broken, 'real é/b.tmfx': manifest(module('ws.a'))});
  symlinkSync(folder.at('real é'), folder.at('link'));
  const real = folder.uri('real é/a.tmfx');
  const link = folder.uri('link/a.tmfx');
  const written = real.replace('%C3%A9', '%c3%a9').replace('a.tmfx', '%61%2Etmfx');
  assert.notEqual(written, real);
  for (const [uri, folderName] of [[link, 'link'], [real, 'real é'], [written, 'real é']]) {
    const other = folder.uri(`${folderName}/b.tmfx`);
    const client = await Client.start();
    client.open(uri, manifest(module('ws.a')));
    const [{relatedInformation: [{location}]}] = await client.shows(other, ['duplicate-module']);
    assert.equal(location.uri, uri);
    await client.stop();
  }
  const client = await Client.start();
  client.open(link, manifest());
  client.open(real, broken);  // the same file
  await client.shows(link, ['bad-number']);
  await client.shows(real, ['bad-number']);
  client.close(real);
  await client.shows(link, []);
  await client.stop();
});

test('layout files are served, too', async () => {
  const folder = new Folder({'pack/a.tmfx': manifest()});
  const client = await Client.start();
  const uri = folder.uri('pack/.installed');
  client.open(uri, 'bits = 64');
  await client.shows(uri, ['line-not-ended']);
  client.replace(uri, 'base = "nowhere"\n');
  await client.shows(uri, ['base-missing']);
  client.replace(uri, '');
  await client.shows(uri, []);
  client.close(uri);
  client.open(folder.uri('pack/notes.txt'), '<');
  client.open('untitled:a.tmfx', '<');
  client.open(folder.uri('pack/a.tmfx'), '<');
  await client.shows(folder.uri('pack/a.tmfx'), ['not-well-formed']);
  assert.deepEqual([...client.published.keys()].sort(), [uri, folder.uri('pack/a.tmfx')].sort());
  await client.stop();
});

test('settings count, and their faults are told once', async () => {
  const folder = new Folder({
    '.tarnmf-check':
      'stray-text = error\nallow-unused = off\nno-such-rule = off\nloadpoint = process\n',
    'process/modules.tmfx': manifest(module('ws.host').replace('/>', ' type="executable"/>')),
    'pack/a.tmfx': manifest(),
  });
  const client = await Client.start();
  const uri = folder.uri('pack/a.tmfx');
  const unused = '<!-- tarnmf: allow backslash -->';
  client.open(uri, manifest('text', unused, '<runnable moduleref="ws.host"/>'));
  const [stray] = await client.shows(uri, ['stray-text']);  // and the runnable's module is known
  assert.equal(stray.severity, 1);
  await client.eventually(() => assert.equal(client.messages.length, 1));
  assert.match(client.messages[0], /\.tarnmf-check:3:1: there is no rule "no-such-rule"/);
  client.save(uri);
  client.replace(uri, manifest('<runnable moduleref="ws.hots"/>'));
  await client.shows(uri, ['runnable-module-unknown']);
  assert.equal(client.messages.length, 1);

  folder.write('.tarnmf-check', 'loadpoint = gone\n');
  client.save(uri);
  await client.eventually(() => assert.match(client.messages[1], /there is no loadpoint .*gone/));
  await client.stop();
});

test('load points that are given are checked whatever is open', async () => {
  const preloaded = (id) => module(id).replace('/>', '><preload by="anyone"/></module>');
  const folder = new Folder({
    '.tarnmf-check': 'loadpoint = process\n',
    'process/a.tmfx': manifest(preloaded('ws.a')),
    'pack/a.tmfx': manifest(preloaded('ws.b')),
    'other/a.tmfx': manifest('<runnable moduleref="ws.a"/>'),
  });
  const [process, pack, other] =
    ['process', 'pack', 'other'].map((name) => folder.uri(`${name}/a.tmfx`));
  const client = await Client.start(
    {args: ['--loadpoint', folder.at('process'), `${folder.at('pack')}/`]});
  await client.shows(pack, ['preload-not-acted-on']);
  assert.ok(!client.published.has(process));
  // One that is not given is checked with the same load point, apart from those that are.
  client.open(other, manifest('<runnable moduleref="ws.a"/>'));
  await client.shows(other, []);
  client.open(process, broken);
  await client.shows(process, ['bad-number']);
  await client.shows(other, ['runnable-module-unknown']);
  await client.stop();

  const nowhere = new Client(['--loadpoint', folder.at('nowhere')]);
  const {code, stderr} = await soon(nowhere.ended);
  assert.equal(code, 2);
  assert.match(stderr, /nowhere/);
});

for (const dynamicRegistration of [true, false]) {
  test(`changed files are noticed, with watchers: ${dynamicRegistration}`, async () => {
    const folder = new Folder({'pack/a.tmfx': manifest(), 'pack/b.tmfx': broken});
    const client = await Client.start(
      {capabilities: {workspace: {didChangeWatchedFiles: {dynamicRegistration}}}});
    const [a, b, c] = ['a', 'b', 'c'].map((name) => folder.uri(`pack/${name}.tmfx`));
    const tell = (uri) => {
      if (!dynamicRegistration) return client.save(a);
      client.notify('workspace/didChangeWatchedFiles', {changes: [{uri, type: kChanged}]});
    };
    client.open(a, manifest(appClass('ws.a')));
    await client.shows(b, ['bad-number']);
    folder.write('pack/b.tmfx', manifest(module('ws.a')));
    tell(b);
    await client.shows(a, []);
    await client.shows(b, []);
    folder.write('pack/c.tmfx', manifest(module('ws.a')));
    tell(c);
    const [twice] = await client.shows(c, ['duplicate-module']);
    assert.ok(!('relatedInformation' in twice));  // the editor has not said that it shows it
    unlinkSync(folder.at('pack/b.tmfx'));
    tell(b);
    await client.shows(c, []);
    folder.write('.tarnmf-check', 'stray-text = error\n');
    tell(folder.uri('.tarnmf-check'));
    client.replace(a, manifest('text'));
    const [{severity}] = await client.shows(a, ['stray-text']);
    assert.equal(severity, 1);
    if (dynamicRegistration) {
      const [{method, registerOptions: {watchers}}] = client.registrations;
      assert.equal(method, 'workspace/didChangeWatchedFiles');
      assert.deepEqual(watchers.map(({globPattern}) => globPattern),
        ['**/*.tmfx', '**/.installed', '**/.tarnmf-check']);
    } else {
      assert.deepEqual(client.registrations, []);
      // Without a notification, another file that is opened is a reason to look.
      client.replace(a, manifest(appClass('ws.a')));
      folder.write('pack/c.tmfx', broken);
      client.open(folder.uri('pack/d.tmfx'), manifest(module('ws.a')));
      await client.shows(c, ['bad-number']);
    }
    await client.stop();
  });
}
