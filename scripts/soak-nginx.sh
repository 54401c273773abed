#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Shows 20,000 ads (or as many as the first argument says) from nginx, over TLS and HTTP/2 and
# compressed, while nginx is told to reload and is killed, and counts what becomes of each.
set -euo pipefail
CDPATH='' cd "$(dirname "$0")/.."
scripts/setup.sh
export QT_QPA_PLATFORM=offscreen

cmake --preset release -B build/soak -DVEXMORA_TESTS=ON >/dev/null
cmake --build build/soak --target nginx_soak >/dev/null

folder=$(mktemp -d)
chmod 755 "$folder"
port=$(python3 -c 'import socket; s = socket.create_server(("127.0.0.1", 0)); print(s.getsockname()[1])')
server=https://127.0.0.1:$port
openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=127.0.0.1 \
    -addext subjectAltName=IP:127.0.0.1 -keyout "$folder/key" -out "$folder/certificate" 2>/dev/null

mkdir "$folder/root"
cp adserver/catalog/pictures/* "$folder/root"
ad() { # name, "adTypeId", picture
    printf '[{"adTypeId": %s, "clickUrl": "%s/", "bannerUrl": "%s/%s", "title": "A title", "description": "%s", "displayName": "Acme"}]' \
        "$2" "$server" "$server" "$3" "$(printf 'Words. %.0s' {1..50})" >"$folder/root/$1.json"
}
ad banner 77 harbour-coffee-320x60.png
ad native 1 solstice-gardens-native.jpg
ad interstitial 14 paperlark-notes-300x250.jpg

cat >"$folder/nginx.conf" <<EOF
daemon off;
worker_processes 2;
pid $folder/pid;
error_log $folder/errors;
events { worker_connections 512; }
http {
    types { application/json json; image/png png; image/jpeg jpg; }
    log_format protocol '\$server_protocol \$status \$sent_http_content_encoding';
    access_log $folder/log protocol;
    client_body_temp_path $folder/t1; proxy_temp_path $folder/t2; fastcgi_temp_path $folder/t3;
    uwsgi_temp_path $folder/t4; scgi_temp_path $folder/t5;
    gzip on;
    gzip_types application/json;
    map \$arg_types \$answer { default banner; 1 native; "15,14" interstitial; }
    server {
        listen 127.0.0.1:$port ssl http2;
        ssl_certificate $folder/certificate;
        ssl_certificate_key $folder/key;
        root $folder/root;
        add_header Cache-Control no-store;
        location = /ads { rewrite ^ /\$answer.json break; }
    }
}
EOF

start() {
    nginx -c "$folder/nginx.conf" -e "$folder/errors" &
    nginx=$!
}
# Only processes that this script has started.
killHard() {
    local workers
    mapfile -t workers < <(pgrep -P "$nginx")
    kill -KILL "$@" "${workers[@]}" 2>/dev/null || true
}
disturb() {
    while sleep 0.4; do
        kill -HUP "$nginx" 2>/dev/null || true
        sleep 0.4
        killHard
        sleep 0.4
        killHard "$nginx"
        wait "$nginx" 2>/dev/null || true
        start
    done
}
disturber=
clean() {
    [ -z "$disturber" ] || kill "$disturber" 2>/dev/null || true
    [ ! -s "$folder/pid" ] || kill "$(cat "$folder/pid")" 2>/dev/null || true
    wait 2>/dev/null || true
    rm -rf "$folder"
}
trap clean EXIT

(
    trap 'killHard "$nginx"; exit' TERM
    start
    disturb
) 2>/dev/null &
disturber=$!
until curl -s --cacert "$folder/certificate" -o /dev/null "$server/native.json"; do sleep 0.1; done

echo "| ads | drawn | RequestError | no picture | lost | told twice |"
VEXMORA_TEST_CERTIFICATE=$folder/certificate timeout 900 \
    build/soak/bin/nginx_soak "$server/ads?container=%@&types=%@" "${1:-20000}"
echo "What nginx has sent, by protocol, status and encoding:"
sort "$folder/log" | uniq -c
