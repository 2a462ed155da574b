// SPDX-License-Identifier: Apache-2.0
// How conversations begin and end, what the server makes of broken input, and cancelled requests.
import assert from 'node:assert/strict';
import {spawn} from 'node:child_process';
import {once} from 'node:events';
import {test} from 'node:test';
import {setTimeout as pause} from 'node:timers/promises';
import {Client} from './client.mjs';
import {ended, protocol, soon, spawnServer} from './server.mjs';
import {Folder, manifest, module, rangeOf} from './texts.mjs';

const {CancellationTokenSource} = protocol;

const kUnreadable = -32700;
const kInvalidRequest = -32600;
const kMethodNotFound = -32601;
const kInvalidParams = -32602;
const kNotInitialized = -32002;
const kCancelled = -32800;

function framed(message, header = (length) => `Content-Length: ${length}\r\n\r\n`) {
  const body = typeof message === 'string' ? message : JSON.stringify({jsonrpc: '2.0', ...message});
  return header(body.length) + body;  // a byte each
}
const initialize = {id: 1, method: 'initialize', params: {capabilities: {}}};
const shutdown = {id: 2, method: 'shutdown'};
const exit = {method: 'exit'};

// What the server answers to the bytes, given in these pieces, and how it ends then.
async function conversation(...pieces) {
  const server = spawnServer();
  const end = ended(server);
  const output = [];
  server.stdout.on('data', (data) => output.push(data));
  server.stdin.on('error', () => {});  // it may end before it has read everything
  for (const piece of pieces) {
    server.stdin.write(piece, 'latin1');
    await pause(10);
  }
  server.stdin.end();
  const {code, signal, stderr} = await soon(end);
  assert.equal(signal, null, stderr);
  const answers = [];
  for (let rest = Buffer.concat(output); rest.length > 0;) {
    const header = /^Content-Length: (\d+)\r\n\r\n/.exec(rest.toString('latin1'));
    assert.ok(header, rest.toString());
    const next = header[0].length + Number(header[1]);
    answers.push(JSON.parse(rest.subarray(header[0].length, next).toString()));
    rest = rest.subarray(next);
  }
  const summary = ({id, result, error}) => [id, error?.code ?? typeof result];
  return {code, stderr, answers: answers.map(summary)};
}

test('requests are answered between initialize and shutdown', async () => {
  const client = new Client([]);
  await client.fails(client.ask('hover', 'file:///a.tmfx'), kNotInitialized);
  client.open('file:///a.tmfx', '');
  const {capabilities, serverInfo} = await client.request('initialize', {capabilities: {}});
  assert.equal(serverInfo.name, 'tarnmf');
  assert.equal(capabilities.positionEncoding, 'utf-16');
  await client.fails(client.request('initialize', {capabilities: {}}), kInvalidRequest);
  client.notify('initialized', {});
  client.notify('workspace/noSuchNotification', {});
  await client.fails(client.request('workspace/noSuchMethod', {}), kMethodNotFound);
  await client.fails(client.ask('hover', 7), kInvalidParams);
  const position = {line: 0, character: 0};
  assert.equal(await client.ask('hover', 'untitled:Untitled-1', {position}), null);
  assert.equal(await client.request('shutdown'), null);
  await client.fails(client.request('workspace/symbol', {query: ''}), kInvalidRequest);
  client.notify('exit');
  assert.deepEqual(await soon(client.ended), {code: 0, signal: null, stderr: ''});
  assert.equal(client.published.size, 0);  // what came before "initialize" is dropped
});

test('the exit status tells whether the editor has shut down', async () => {
  const ok = {stderr: '', answers: [[1, 'object'], [2, 'object']]};
  const all = framed(initialize) + framed(shutdown) + framed(exit);
  assert.deepEqual(await conversation(all), {code: 0, ...ok});
  assert.deepEqual(await conversation(framed(initialize) + framed(shutdown)), {code: 0, ...ok});
  assert.deepEqual(await conversation(framed(initialize) + framed(exit)),
    {code: 1, stderr: '', answers: [[1, 'object']]});
  assert.deepEqual(await conversation(), {code: 1, stderr: '', answers: []});
});

test('messages are told apart however they come', async () => {
  const ok = {code: 0, stderr: '', answers: [[1, 'object'], [2, 'object']]};
  const rest = framed(shutdown) + framed(exit);
  const whole = framed(initialize) + rest;
  for (const at of [1, 15, 17, 20, 21, 22, 40, framed(initialize).length + 5])
    assert.deepEqual(await conversation(whole.slice(0, at), whole.slice(at)), ok, `cut at ${at}`);
  const headers = {
    'other fields': (length) =>
      `Content-Type: application/json; charset=utf-8\r\nContent-Length: ${length}\r\nX: y\r\n\r\n`,
    'lower case': (length) => `content-length:${length}\r\n\r\n`,
  };
  for (const [name, header] of Object.entries(headers))
    assert.deepEqual(await conversation(framed(initialize, header) + rest), ok, name);
});

test('broken frames end the server with a sentence', async () => {
  const cases = [
    ['Content-Length: 12x\r\n\r\n{}', /tells no length/],
    ['Content-Length: -5\r\n\r\n{}', /tells no length/],
    ['Content-Length: 99999999999999999999999\r\n\r\n{}', /tells no length/],
    ['Content-Length: \r\n\r\n{}', /tells no length/],
    ['Content-Type: x\r\n\r\n{}', /tells no length/],
    ['Content-Le', /breaks off in the header/],
    ['Content-Length: 100\r\n\r\n{"id":', /breaks off in a message/],
    ['Content-Length: 1000000000\r\n\r\n', /1000000000 bytes is longer/],
    ['Content-Length: 200000000\r\n\r\n{}', /breaks off in a message/],
    ['x'.repeat(100_000), /has no end/],
  ];
  for (const [bytes, sentence] of cases) {
    const {code, stderr, answers} =
      await conversation(framed(initialize) + framed(shutdown) + bytes);
    assert.equal(code, 1, bytes.slice(0, 40));
    assert.match(stderr, sentence);
    assert.deepEqual(answers.slice(2), [[null, kUnreadable]]);
  }
});

test('what is no message is answered, and the next one is read', async () => {
  const cases = [
    ['{"id":', null, kUnreadable],
    ['', null, kUnreadable],
    ['\xff\xfe', null, kUnreadable],
    ['['.repeat(100_000), null, kUnreadable],
    ['7', null, kInvalidRequest],
    ['[]', null, kInvalidRequest],
    [JSON.stringify([{jsonrpc: '2.0', ...shutdown}]), null, kInvalidRequest],
    ['{}', null, kInvalidRequest],
    ['{"id":3}', null, kInvalidRequest],
    ['{"id":3,"method":7}', null, kInvalidRequest],
    ['{"id":{},"method":"shutdown"}', null, kInvalidRequest],
    ['{"id":3,"method":"textDocument/hover","params":[1]}', 3, kInvalidParams],
    ['{"id":"x","method":"textDocument/hover"}', 'x', kInvalidParams],
  ];
  const bytes = cases.map(([body]) => framed(body)).join('') + framed('{"id":9,"result":null}');
  const {code, stderr, answers} =
    await conversation(framed(initialize) + bytes + framed(shutdown) + framed(exit));
  assert.deepEqual(answers,
    [[1, 'object'], ...cases.map(([, id, error]) => [id, error]), [2, 'object']]);
  assert.deepEqual([code, stderr], [0, '']);
});

test('the server ends with its editor', async () => {
  const editor = spawn(process.execPath, ['-e', `
    const {spawn} = require('node:child_process');
    const server = spawn(process.argv[1], ['lsp'], {stdio: ['pipe', 'pipe', 'inherit']});
    server.stdin.write(process.argv[2]);
    server.stdout.once('data', () => console.log('answered'));
  `, process.env.TARNMF_TOOL, framed(initialize)]);
  const end = ended(editor);  // when the server's standard error has been closed, too
  await once(editor.stdout, 'data');
  editor.kill('SIGKILL');
  assert.deepEqual(await soon(end), {code: null, signal: 'SIGKILL', stderr: ''});

  const unheard = spawnServer();
  const itsEnd = ended(unheard);
  unheard.stdout.destroy();
  await pause(50);
  for (const message of [initialize, shutdown, exit]) unheard.stdin.write(framed(message));
  // Its answers have not arrived.
  assert.deepEqual(await soon(itsEnd), {code: 1, signal: null, stderr: ''});
});

test('a request that waits can be cancelled', async () => {
  const folder = new Folder();
  for (let i = 0; i < 60; ++i)
    folder.write(`pack/${i}.tmfx`,
      manifest(...Array.from({length: 100}, (_, n) => module(`m${i}.${n}`))));
  const client = await Client.start();
  const uri = folder.uri('pack/open.tmfx');
  client.open(uri, manifest('<module idd="a" id="b" name="m" loadpoint=""/>'));
  const order = [];
  const ask = (name, method, more) => {
    const source = new CancellationTokenSource();
    const answer = client.request(method, {textDocument: {uri}, ...more}, source.token)
      .then(() => order.push(name), (error) => order.push(`${name} ${error.code}`));
    return {answer, cancel: () => source.cancel()};
  };
  const range = rangeOf(client.texts.get(uri), 'idd="a"');
  const slow = ask('slow', 'textDocument/codeAction', {range, context: {diagnostics: []}});
  const requests =
    Array.from({length: 20}, (_, i) => ask(`symbols ${i}`, 'textDocument/documentSymbol'));
  requests[7].cancel();
  client.notify('$/cancelRequest', {id: 'nobody'});
  client.notify('$/cancelRequest', {});
  await Promise.all([slow, ...requests].map(({answer}) => answer));
  requests[3].cancel();  // it is done
  const others = requests.map((_, i) => `symbols ${i}`).filter((_, i) => i !== 7);
  assert.deepEqual(order, [`symbols 7 ${kCancelled}`, 'slow', ...others]);
  await client.stop();
});
