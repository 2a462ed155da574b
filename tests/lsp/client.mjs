// SPDX-License-Identifier: Apache-2.0
// A client of the server, made of the protocol's own package.
import assert from 'node:assert/strict';
import {after} from 'node:test';
import {ended, patience, protocol, soon, spawnServer} from './server.mjs';
import {applied, rangeOf} from './texts.mjs';

// An editor that can do everything that the server asks about.
export const allAbilities = {
  textDocument: {
    completion: {completionItem: {snippetSupport: true}},
    hover: {contentFormat: ['markdown', 'plaintext']},
    documentSymbol: {hierarchicalDocumentSymbolSupport: true},
    codeAction: {codeActionLiteralSupport: {codeActionKind: {valueSet: ['quickfix', 'source']}}},
    publishDiagnostics: {relatedInformation: true, versionSupport: true},
    rename: {prepareSupport: true},
  },
  workspace: {
    workspaceEdit: {documentChanges: true},
    didChangeWatchedFiles: {dynamicRegistration: true},
  },
};

export class Client {
  texts = new Map();  // of open documents, by URI
  versions = new Map();
  published = new Map();  // the diagnostics that an editor would show, by URI
  messages = [];  // for people
  registrations = [];

  static async start({args = [], capabilities = allAbilities} = {}) {
    const client = new Client(args);
    const params = {processId: process.pid, rootUri: null, capabilities};
    client.initialized = await client.request('initialize', params);
    client.notify('initialized', {});
    return client;
  }

  constructor(args) {
    this.child = spawnServer(args);
    this.ended = ended(this.child);
    after(() => this.child.kill('SIGKILL'));
    this.connection = protocol.createProtocolConnection(this.child.stdout, this.child.stdin);
    this.connection.onError(() => {});
    this.connection.onNotification('textDocument/publishDiagnostics', (params) => {
      this.published.set(params.uri, params);
      this.#wake();
    });
    for (const method of ['window/showMessage', 'window/logMessage']) {
      this.connection.onNotification(method, (params) => {
        this.messages.push(params.message);
        this.#wake();
      });
    }
    this.connection.onRequest('client/registerCapability', (params) => {
      this.registrations.push(...params.registrations);
      this.#wake();
      return null;
    });
    this.connection.listen();
  }

  #wake = () => {};

  // Waits until the assertions hold after something that the server has sent; fails as they do.
  async eventually(assertions) {
    const end = Date.now() + patience;
    for (;;) {
      const woken = new Promise((resolve) => (this.#wake = resolve));
      try {
        return assertions();
      } catch (failure) {
        if (Date.now() >= end) throw failure;
        const timer = setTimeout(this.#wake, end - Date.now());
        await woken;
        clearTimeout(timer);
      }
    }
  }

  // Waits for what is found in the document as it is now, or in a file that is not open.
  async diagnostics(uri) {
    const {diagnostics} = await this.eventually(() => this.#current(uri));
    return diagnostics;
  }
  // Waits until the findings that it shows are of these rules.
  async shows(uri, rules) {
    return this.eventually(() => {
      const isUntold = !this.versions.has(uri) && !this.published.has(uri);
      const diagnostics = isUntold ? [] : this.#current(uri).diagnostics;
      assert.deepEqual(diagnostics.map((each) => each.code), rules, uri);
      return diagnostics;
    });
  }
  #current(uri) {
    const published = this.published.get(uri);
    const least = this.versions.get(uri);
    const isCurrent = published && (least === undefined || published.version >= least);
    assert.ok(isCurrent, `no diagnostics of ${uri}`);
    return published;
  }

  request(method, ...paramsAndToken) {
    return this.connection.sendRequest(method, ...paramsAndToken);
  }
  // The answer to a request about one document; `more` may say where.
  ask(method, uri, more = {}) {
    return this.request(`textDocument/${method}`, {textDocument: {uri}, ...more});
  }
  // The answer to one about the beginning of a text in the document.
  askAt(method, uri, part, more = {}) {
    return this.ask(method, uri, {position: rangeOf(this.texts.get(uri), part).start, ...more});
  }
  async fails(request, code) {
    await assert.rejects(request, (error) => {
      assert.equal(error.code, code, error.message);
      return true;
    });
  }

  notify(method, params) {
    this.connection.sendNotification(method, params);
  }
  open(uri, text, version = 1) {
    this.texts.set(uri, text);
    this.versions.set(uri, version);
    const textDocument = {uri, languageId: 'plaintext', version, text};
    this.notify('textDocument/didOpen', {textDocument});
  }
  // Changes in the protocol's form; `text` is what becomes of the document.
  change(uri, changes, {text = changes.at(-1).text, version = this.versions.get(uri) + 1} = {}) {
    this.texts.set(uri, text);
    this.versions.set(uri, version);
    this.notify('textDocument/didChange', {textDocument: {uri, version}, contentChanges: changes});
  }
  replace(uri, text) {
    this.change(uri, [{text}]);
  }
  save(uri) {
    this.notify('textDocument/didSave', {textDocument: {uri}});
  }
  close(uri) {
    this.texts.delete(uri);
    this.versions.delete(uri);
    this.notify('textDocument/didClose', {textDocument: {uri}});
  }

  // Applies what a request proposes; to the files that are not open as well.
  apply({changes, documentChanges}, storedText, store) {
    const files = documentChanges ??
      Object.entries(changes).map(([uri, edits]) => ({textDocument: {uri}, edits}));
    for (const {textDocument: {uri, version}, edits} of files) {
      const open = this.texts.get(uri);
      if (open === undefined) {
        assert.equal(version ?? null, null);
        store(uri, applied(storedText(uri), edits));
      } else {
        if (version !== undefined) assert.equal(version, this.versions.get(uri));
        this.replace(uri, applied(open, edits));
      }
    }
  }

  async stop() {
    assert.equal(await this.request('shutdown'), null);
    this.notify('exit');
    assert.deepEqual(await soon(this.ended), {code: 0, signal: null, stderr: ''});
    this.connection.dispose();
  }
}
