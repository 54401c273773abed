// SPDX-License-Identifier: MIT
#include "adserver/Delivery.h"

#include <zlib.h>

#include <algorithm>
#include <chrono>

#include "adserver/HttpServer.h"

namespace VexmoraSDK {
namespace {

Connection& client() {
    return HttpServer::connection();
}

std::string half(const Exchange& exchange) {
    return exchange.body.substr(0, exchange.body.size() / 2);
}

/// A header whose value is a number.
std::string header(const char* name, std::size_t value) {
    return std::string(name) + ": " + std::to_string(value) + "\r\n";
}

std::string length(const Exchange& exchange) {
    return header("Content-Length", exchange.body.size());
}

/// The status line and the headers, the given ones included.
std::string head(const Exchange& exchange, const std::string& headers) {
    return "HTTP/1.1 200 OK\r\nContent-Type: " + exchange.contentType + "\r\n" + headers + "\r\n";
}

std::string chunk(std::string_view size, const std::string& bytes) {
    return std::string(size).append("\r\n").append(bytes).append("\r\n");
}

std::string chunked(const Exchange& exchange, std::string_view firstSize) {
    return head(exchange, "Transfer-Encoding: chunked\r\n") + chunk(firstSize, exchange.body) +
           chunk("0", "");
}

void sendAndClose(const std::string& bytes) {
    client().sendAll(bytes);
    client().close();
}

void sendAndStall(const std::string& bytes) {
    client().sendAll(bytes);
    client().wait();
    client().close();
}

void sendWithoutEnd(const std::string& beginning, const std::string& more) {
    client().sendAll(beginning);
    while (client().sendAll(more)) {
    }
    client().close();
}

/// A conditional request whose validator still matches is answered with 304.
void whole(Exchange& exchange) {
    httplib::Response& response = exchange.response;
    response.set_header("Cache-Control", exchange.cacheControl);
    if (exchange.cacheControl != "no-store") {
        const auto tag = '"' + std::to_string(std::hash<std::string>{}(exchange.body)) + '"';
        response.set_header("ETag", tag);
        response.status = exchange.request.get_header_value("If-None-Match") == tag ? 304 : 200;
    }
    if (response.status != 304) response.set_content(exchange.body, exchange.contentType);
}

void inChunks(Exchange& exchange, const std::string& more) {
    exchange.response.set_chunked_content_provider(
        exchange.contentType,
        [body = exchange.body, more](std::size_t offset, httplib::DataSink& sink) {
            const std::string& next = offset == 0 ? body : more;
            return !next.empty() && sink.write(next.data(), next.size());
        });
}

/// The bytes, compressed by zlib; `flush` decides whether more may follow.
std::string deflated(const std::string& bytes, int windowBits, int flush) {
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY);
    std::string result(deflateBound(&stream, bytes.size()) + 64, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    deflate(&stream, flush);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

std::string gzipped(const std::string& bytes) {
    return deflated(bytes, MAX_WBITS + 16, Z_FINISH);
}

constexpr auto kGzip = "Content-Encoding: gzip\r\n";

// Each megabyte of blanks is one kilobyte when it is compressed.
void gzipBomb(Exchange& exchange) {
    const std::string blanks(std::size_t{1} << 20, ' ');
    sendWithoutEnd(head(exchange, kGzip) + deflated(exchange.body, MAX_WBITS + 16, Z_FULL_FLUSH),
                   deflated(blanks, -MAX_WBITS, Z_FULL_FLUSH));
}

void dribble(Exchange& exchange) {
    client().sendAll(head(exchange, length(exchange)));
    for (const char byte : exchange.body) {
        client().wait(std::chrono::seconds(1));
        if (!client().sendAll({&byte, 1})) break;
    }
    client().close();
}

/// Redirects to the same path on another server.
void redirectTo(Exchange& exchange, const std::string& server) {
    exchange.response.set_redirect(server + exchange.request.path);
}

void redirect(Exchange& exchange) {
    const httplib::Request& request = exchange.request;
    exchange.response.set_redirect(request.path + "?types=" + request.get_param_value("types"));
}

/// Redirects to the same address `times` times, then delivers the response.
void redirectTimes(Exchange& exchange, std::size_t times) {
    const std::string hops = exchange.request.get_param_value("hops");
    if (hops.size() == times) return whole(exchange);
    exchange.response.set_redirect(exchange.request.target + (hops.empty() ? "&hops=x" : "x"));
}

constexpr Delivery kGood{"", whole};

constexpr Delivery kBad[] = {
    // These are valid responses without an ad or a picture.
    {"status-404", [](Exchange& e) { e.response.status = 404; }},
    {"status-500", [](Exchange& e) { e.response.status = 500; }},
    {"status-204", [](Exchange& e) { e.response.status = 204; }},
    {"status-304", [](Exchange& e) { e.response.status = 304; }},
    {"redirect-304",
     [](Exchange& e) {
         e.response.status = 304;
         e.response.set_header("Location", "/landing/elsewhere");
     }},
    {"status-206",
     [](Exchange& e) {
         const std::string part = half(e);
         sendAndClose("HTTP/1.1 206 Partial Content\r\nContent-Range: bytes 0-" +
                      std::to_string(part.size() - 1) + "/" + std::to_string(e.body.size()) +
                      "\r\n" + header("Content-Length", part.size()) + "\r\n" + part);
     }},
    {"empty-body", [](Exchange& e) { e.response.set_content("", e.contentType); }},
    {"garbage", [](Exchange& e) { e.response.set_content("Out. Back at two.", e.contentType); }},

    // These deliver the whole response.
    {"slow",
     [](Exchange& e) {
         client().wait(std::chrono::milliseconds(300));
         whole(e);
     }},
    {"gzip",
     [](Exchange& e) {
         e.response.set_header("Content-Encoding", "gzip");
         e.response.set_content(gzipped(e.body), e.contentType);
     }},
    {"no-store", whole},
    {"no-cache",
     [](Exchange& e) {
         e.cacheControl = "no-cache";
         whole(e);
     }},
    {"redirect", redirect},
    {"redirect-chain", [](Exchange& e) { redirectTimes(e, 20); }},
    {"until-closed", [](Exchange& e) { sendAndClose(head(e, "") + e.body); }},

    // These never get a connection.
    {"refused", [](Exchange& e) { redirectTo(e, "http://127.0.0.1:1"); }},
    {"unresolved", [](Exchange& e) { redirectTo(e, "http://pictures.invalid"); }},
    {"stall-connect", [](Exchange& e) { redirectTo(e, "http://" + e.ports.full()); }},
    {"stall-handshake", [](Exchange& e) { redirectTo(e, "https://" + e.ports.silent()); }},
    {"bad-certificate", [](Exchange& e) { redirectTo(e, "https://" + e.ports.selfSigned()); }},

    // These end too early.
    {"nothing", [](Exchange&) { client().close(); }},
    {"cut-status", [](Exchange&) { sendAndClose("HTTP/1.1 20"); }},
    {"cut-headers", [](Exchange& e) { sendAndClose("HTTP/1.1 200 OK\r\n" + length(e)); }},
    {"cut-short", [](Exchange& e) { sendAndClose(head(e, length(e)) + half(e)); }},
    {"cut-chunked", [](Exchange& e) { inChunks(e, ""); }},
    {"cut-gzip",
     [](Exchange& e) {
         const std::string bytes = gzipped(e.body);
         sendAndClose(head(e, kGzip) + bytes.substr(0, bytes.size() / 2));
     }},
    {"reset", [](Exchange&) { client().reset(); }},
    {"reset-body",
     [](Exchange& e) {
         client().sendAll(head(e, length(e)) + half(e));
         client().reset();
     }},

    // These stop sending and keep the connection open.
    {"stall", [](Exchange&) { sendAndStall(""); }},
    {"stall-status", [](Exchange&) { sendAndStall("HTTP/1.1 20"); }},
    {"stall-headers", [](Exchange& e) { sendAndStall("HTTP/1.1 200 OK\r\n" + length(e)); }},
    {"stall-body", [](Exchange& e) { sendAndStall(head(e, length(e)) + half(e)); }},
    {"dribble", dribble},

    // These send too much.
    {"early-hints",
     [](Exchange&) { sendWithoutEnd("", "HTTP/1.1 103 Early Hints\r\nLink: x\r\n\r\n"); }},
    {"long-header",
     [](Exchange& e) {
         sendAndClose(head(e, length(e) + "X: " + std::string(std::size_t{1} << 20, 'x') + "\r\n") +
                      e.body);
     }},
    {"many-headers",
     [](Exchange& e) {
         std::string headers = length(e);
         while (headers.size() < std::size_t{1} << 20)
             headers += "X-Again: and again and again\r\n";
         sendAndClose(head(e, headers) + e.body);
     }},
    {"endless-headers",
     [](Exchange&) { sendWithoutEnd("HTTP/1.1 200 OK\r\n", "X-Again: again\r\n"); }},
    {"endless", [](Exchange& e) { inChunks(e, std::string(64'000, ' ')); }},
    {"gzip-bomb", gzipBomb},
    {"empty-members",
     [](Exchange& e) {
         std::string nothing;
         while (nothing.size() < 64'000)
             nothing += gzipped("");
         sendWithoutEnd(head(e, kGzip) + gzipped(e.body), nothing);
     }},
    {"redirect-endless",
     [](Exchange&) {
         sendWithoutEnd("HTTP/1.1 302 Found\r\nLocation: /landing/elsewhere\r\n\r\n",
                        std::string(64'000, ' '));
     }},
    {"redirect-crumbs",
     [](Exchange&) {
         std::string headers = "Location: /landing/elsewhere\r\nTransfer-Encoding: chunked\r\n";
         while (headers.size() < 250'000)
             headers += "a:b\r\n";
         std::string crumbs;
         while (crumbs.size() < 64'000)
             crumbs += chunk("1", "x");
         sendWithoutEnd("HTTP/1.1 302 Found\r\n" + headers + "\r\n", crumbs);
     }},
    {"endless-extension",
     [](Exchange& e) {
         sendWithoutEnd(head(e, "Transfer-Encoding: chunked\r\n") + "1;", std::string(64'000, 'x'));
     }},
    {"endless-trailers",
     [](Exchange& e) {
         sendWithoutEnd(head(e, "Transfer-Encoding: chunked\r\n") + "0\r\n",
                        "X-Again: and again and again\r\n");
     }},
    {"redirect-far", [](Exchange& e) { redirectTimes(e, 21); }},
    {"redirect-loop", [](Exchange& e) { e.response.set_redirect(e.request.target); }},

    // These break the rules of HTTP.
    {"not-http", [](Exchange&) { sendAndClose("\x16\x03\x01\xff\xfe Hello?\r\n\r\n"); }},
    {"version",
     [](Exchange& e) { sendAndClose("HTTP/7.3 200 OK\r\n" + length(e) + "\r\n" + e.body); }},
    {"length-short",
     [](Exchange& e) {
         sendAndClose(head(e, header("Content-Length", e.body.size() / 2)) + e.body);
     }},
    {"length-twice", [](Exchange& e) { sendAndClose(head(e, length(e) + length(e)) + e.body); }},
    {"lengths-differ",
     [](Exchange& e) {
         sendAndClose(head(e, length(e) + header("Content-Length", e.body.size() / 2)) + e.body);
     }},
    {"lengths-listed",
     [](Exchange& e) {
         const auto both = length(e).insert(length(e).size() - 2, ", 10");
         sendAndClose(head(e, both) + e.body);
     }},
    {"transfer-gzip",
     [](Exchange& e) { sendAndClose(head(e, "Transfer-Encoding: gzip\r\n") + gzipped(e.body)); }},
    {"transfer-unknown",
     [](Exchange& e) { sendAndClose(head(e, "Transfer-Encoding: origami\r\n") + e.body); }},
    {"length-negative",
     [](Exchange& e) { sendAndClose(head(e, "Content-Length: -1\r\n") + e.body); }},
    {"length-words",
     [](Exchange& e) { sendAndClose(head(e, "Content-Length: all\r\n") + e.body); }},
    {"length-overflow",
     [](Exchange& e) {
         sendAndClose(head(e, "Content-Length: 99999999999999999999\r\n") + e.body);
     }},
    {"chunk-words", [](Exchange& e) { sendAndClose(chunked(e, "all")); }},
    {"chunk-negative", [](Exchange& e) { sendAndClose(chunked(e, "-1")); }},
    {"chunk-overflow", [](Exchange& e) { sendAndClose(chunked(e, "fffffffffffffffff")); }},
    {"chunk-short", [](Exchange& e) { sendAndClose(chunked(e, "3")); }},
    {"gzip-lie",
     [](Exchange& e) {
         e.response.set_header("Content-Encoding", "gzip");
         whole(e);
     }},
    {"encoding-unknown",
     [](Exchange& e) {
         e.response.set_header("Content-Encoding", "origami");
         whole(e);
     }},
    {"redirect-file", [](Exchange& e) { e.response.set_redirect("file:///etc/hostname"); }},
    {"redirect-words", [](Exchange& e) { e.response.set_redirect("http://[to somewhere"); }},
};

}  // namespace

const Delivery& Delivery::good() {
    return kGood;
}

std::span<const Delivery> Delivery::bad() {
    return kBad;
}

const Delivery* Delivery::named(std::string_view name) {
    const auto* const found = std::ranges::find(kBad, name, &Delivery::name);
    return found == std::end(kBad) ? nullptr : found;
}

}  // namespace VexmoraSDK
