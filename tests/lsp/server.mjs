// SPDX-License-Identifier: Apache-2.0
// The server's process. TARNMF_TOOL is the tool, TARNMF_PACKAGES the folder with node_modules.
import assert from 'node:assert/strict';
import {spawn} from 'node:child_process';
import {once} from 'node:events';
import {createRequire} from 'node:module';
import {join} from 'node:path';
import {setTimeout as sleep} from 'node:timers/promises';

const require = createRequire(join(process.env.TARNMF_PACKAGES, 'package.json'));
export const protocol = require('vscode-languageserver-protocol/node');

export const patience = 60_000;  // milliseconds, for builds that are slow

export function spawnServer(args = []) {
  return spawn(process.env.TARNMF_TOOL, ['lsp', ...args]);
}

// How the process ends, and what it has said.
export async function ended(child) {
  let stderr = '';
  child.stderr.on('data', (data) => (stderr += data));
  const [code, signal] = await once(child, 'close');
  return {code, signal, stderr};
}
// Fails when the promise takes too long.
export async function soon(promise) {
  const late = new AbortController();
  const failure = sleep(patience, null, {signal: late.signal}).then(
    () => assert.fail('nothing has come of it for too long'), () => {});
  await Promise.race([promise, failure]);
  late.abort();
  return promise;
}
