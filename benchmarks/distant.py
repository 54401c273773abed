# SPDX-License-Identifier: MIT
"""An ad and its picture over TLS, from two servers that are a round trip away."""

import asyncio
import json
import ssl
import subprocess
import threading


class DistantServers:
    """Each server has a proxy before it, in this process, that holds back what passes it for half
    of the round trip in each direction. Connections are accepted at once: the round trip of TCP's
    own handshake is missing, for everybody who is compared."""

    def __init__(self, folder, picture, round_trip):
        self.picture, self.delay = picture, round_trip / 2
        self.certificate = f"{folder}/certificate.pem"
        key = f"{folder}/key.pem"
        subprocess.run(
            ["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256",
             "-nodes", "-keyout", key, "-out", self.certificate, "-days", "2",
             "-subj", "/CN=127.0.0.1", "-addext", "subjectAltName=IP:127.0.0.1"],
            check=True, stderr=subprocess.DEVNULL)
        self.context = ssl.create_default_context(ssl.Purpose.CLIENT_AUTH)
        self.context.load_cert_chain(self.certificate, key)
        self.loop = asyncio.new_event_loop()
        self.connections = set()

    def __enter__(self):
        self.ads, self.pictures = (self.loop.run_until_complete(self.listen()) for _ in range(2))
        self.thread = threading.Thread(target=self.loop.run_forever, daemon=True)
        self.thread.start()
        return self

    def __exit__(self, *_):
        self.loop.call_soon_threadsafe(self.loop.stop)
        self.thread.join()
        rest = asyncio.all_tasks(self.loop)
        for task in rest:
            task.cancel()
        if rest:
            self.loop.run_until_complete(asyncio.wait(rest))

    async def listen(self):
        """The address of a server behind its proxy."""
        server = await asyncio.start_server(self.serve, "127.0.0.1", 0, ssl=self.context)
        port = server.sockets[0].getsockname()[1]
        proxy = await asyncio.start_server(
            lambda reader, writer: self.connect(reader, writer, port), "127.0.0.1", 0)
        return f"https://127.0.0.1:{proxy.sockets[0].getsockname()[1]}"

    async def serve(self, reader, writer):
        try:
            while True:
                request = await reader.readuntil(b"\r\n\r\n")
                ads = json.dumps([{"adTypeId": 77, "clickUrl": "https://127.0.0.1/",
                                   "bannerUrl": f"{self.pictures}/picture"}]).encode()
                body = ads if request.startswith(b"GET /ads") else self.picture
                writer.write(b"HTTP/1.1 200 OK\r\nAccess-Control-Allow-Origin: *\r\n"
                             b"Content-Length: %d\r\n\r\n" % len(body) + body)
                await writer.drain()
        except (asyncio.IncompleteReadError, OSError):
            writer.close()

    async def connect(self, reader, writer, port):
        there = await asyncio.open_connection("127.0.0.1", port)
        for source, target in (reader, there[1]), (there[0], writer):
            task = asyncio.ensure_future(self.forward(source, target))
            self.connections.add(task)
            task.add_done_callback(self.connections.discard)

    async def forward(self, reader, writer):
        data = b"begins"
        while data:
            try:
                data = await reader.read(1 << 16)
            except OSError:
                data = b""
            self.loop.call_later(self.delay, writer.write if data else writer.close,
                                 *([data] if data else []))
