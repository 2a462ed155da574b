# SPDX-License-Identifier: Apache-2.0
"""A session of "tarnmf lsp", as far as it is measured."""

import json
import re
import subprocess
import time
from pathlib import Path


class Session:
    def __init__(self, tool, loadpoint):
        self.server = subprocess.Popen([tool, "lsp", "--loadpoint", loadpoint],
                                       stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.send("initialize", {"capabilities": {}}, id=1)
        self.receive()
        self.version = 0

    def send(self, method, params, **rest):
        message = {"jsonrpc": "2.0", "method": method, "params": params, **rest}
        body = json.dumps(message).encode()
        self.server.stdin.write(b"Content-Length: %d\r\n\r\n" % len(body) + body)
        self.server.stdin.flush()

    def receive(self):
        header = b""
        while not header.endswith(b"\r\n\r\n"):
            header += self.server.stdout.readline()
        length = int(re.search(rb"Content-Length: (\d+)", header).group(1))
        return json.loads(self.server.stdout.read(length))

    def seconds_to_findings(self, method, params):
        self.version += 1
        params["textDocument"] |= {"uri": self.uri, "version": self.version}
        start = time.perf_counter()
        self.send(method, params)
        while self.receive().get("params", {}).get("version") != self.version:
            pass
        return time.perf_counter() - start

    def open(self, path):
        self.uri = Path(path).absolute().as_uri()
        text = Path(path).read_text()
        return self.seconds_to_findings("textDocument/didOpen", {"textDocument": {"text": text}})

    def change(self):
        """Puts in a line."""
        place = {"line": 1, "character": 0}
        edit = {"range": {"start": place, "end": place}, "text": "\n"}
        return self.seconds_to_findings("textDocument/didChange",
                                        {"textDocument": {}, "contentChanges": [edit]})

    def peak_bytes(self):
        status = Path(f"/proc/{self.server.pid}/status").read_text()
        return int(re.search(r"^VmHWM:\s*(\d+) kB", status, re.MULTILINE).group(1)) * 1024

    def close(self):
        self.send("shutdown", None, id=2)
        self.send("exit", None)
        self.server.stdin.close()
        self.server.wait()
