// SPDX-License-Identifier: MIT
"use strict";

const kinds = {
  1: ["Native", ""],
  14: ["Medium rectangle", "300 × 250"],
  15: ["Leaderboard", "728 × 90"],
  77: ["Banner", "320 × 60"],
  79: ["Slideshow", ""],
  83: ["Medium banner", "320 × 100"],
  84: ["Full banner", "468 × 60"],
};
const order = [77, 83, 84, 14, 15, 1, 79];
const period = 1000;

const byId = (id) => document.getElementById(id);

function fromTemplate(id) {
  return byId(id).content.firstElementChild.cloneNode(true);
}

function element(tag, text) {
  const made = document.createElement(tag);
  made.textContent = text;
  return made;
}

/* Calls `show` with a part of the state only when it differs from the one shown. */
function onChange(show) {
  let shown;
  return (part, ...others) => {
    const text = JSON.stringify(part);
    if (text === shown) return;
    shown = text;
    show(part, ...others);
  };
}

function adCard(ad) {
  const card = fromTemplate("ad-template");
  const { record } = ad;
  card.id = `ad-${ad.name}`;
  const picture = card.querySelector("img");
  picture.src = ad.picture;
  picture.alt = `The picture of ${ad.name}`;
  card.querySelector("h3").textContent = ad.name;
  if (record.title) {
    const words = card.querySelector(".words");
    words.hidden = false;
    words.querySelector("h4").textContent = record.title;
    words.querySelector("p").textContent = record.description;
    words.querySelector("small").textContent = record.displayName;
  }
  card.querySelector(".containers").append(
    ...ad.containers.map((container) => element("li", container)));
  card.querySelector("code").textContent = JSON.stringify(record, null, 2);
  return card;
}

const showAds = onChange((ads) => {
  const open = new Set([...document.querySelectorAll(".ad details[open]")]
    .map((details) => details.parentElement.id));
  const groups = order.map((type) => {
    const ofType = ads.filter((ad) => ad.record.adTypeId === type);
    if (ofType.length === 0) return "";
    const group = fromTemplate("group-template");
    const [kind, size] = kinds[type];
    group.dataset.type = type;
    group.querySelector(".kind").textContent = kind;
    group.querySelector(".size").textContent = size;
    group.querySelector(".type").textContent = `type ${type}`;
    group.querySelector(".ads").append(...ofType.map(adCard));
    return group;
  });
  byId("catalogue").replaceChildren(...groups);
  for (const id of open) {
    const details = byId(id)?.querySelector("details");
    if (details) details.open = true;
  }
  const containers = new Set(ads.flatMap((ad) => ad.containers));
  byId("summary").textContent = `${ads.length} ads, ${containers.size} placements`;
});

/* The container and the accepted types stand out; whatever else was asked is shown as it came. */
function targetParts(method, target) {
  const url = new URL(target, location.origin);
  const container = url.searchParams.get("container");
  if (url.pathname !== "/ads" || !container) return [`${method} ${target}`];
  const types = (url.searchParams.get("types") ?? "").replaceAll(",", ", ");
  return [element("strong", container), types ? ` accepts ${types}` : " accepts nothing"];
}

function requestRow({ at, method, target, outcome, warning }) {
  const row = fromTemplate("request-template");
  const time = new Date(at);
  row.querySelector("time").textContent = time.toLocaleTimeString("en-GB");
  row.querySelector("time").dateTime = time.toISOString();
  const told = row.querySelector(".outcome");
  const [kind, name] = [outcome.split(/[ -]/)[0], outcome.slice(outcome.indexOf(" ") + 1)];
  row.dataset.kind = kind;
  told.textContent = warning ? `${outcome}, ${warning}` : outcome;
  if (kind === "ad") told.href = `#ad-${name}`;
  row.title = `${method} ${target}`;
  try {
    row.querySelector(".target").append(...targetParts(method, target));
  } catch {
    row.querySelector(".target").textContent = `${method} ${target}`;
  }
  return row;
}

const showRequests = onChange((answers) => {
  byId("requests").replaceChildren(...answers.map(requestRow));
  byId("quiet").hidden = answers.length > 0;
});

const showFaults = onChange((faults) => {
  byId("fault-count").textContent = faults.length;
  byId("faults").replaceChildren(...faults.map((fault) => {
    const item = document.createElement("li");
    const button = element("button", fault);
    button.type = "button";
    item.append(button);
    return item;
  }));
});

function showText(id, text) {
  byId(id).hidden = !text;
  byId(id).querySelector("pre").textContent = text;
}

function showTemplate(template) {
  byId("template").textContent = template;
  byId("example").textContent =
    `curl '${template.replace("%@", "home-bottom").replace("%@", "77")}'`;
}

function showConnection(connected) {
  byId("connection").className = connected ? "on" : "off";
  byId("connection").textContent = connected ? "serving" : "gone";
}

async function refresh() {
  try {
    const response = await fetch("/page/state.json");
    const state = await response.json();
    showTemplate(state.requestUrlFormat);
    showText("problem", state.problem);
    showText("warnings", state.warnings.join("\n"));
    showAds(state.ads);
    showRequests(state.answers);
    showFaults(state.faults);
    showConnection(true);
  } catch {
    showConnection(false);
  }
  setTimeout(refresh, period);
}

async function copy(button, text) {
  await navigator.clipboard.writeText(text);
  button.classList.add("copied");
  setTimeout(() => button.classList.remove("copied"), 1200);
}

document.addEventListener("click", ({ target }) => {
  const { copies } = target.dataset;
  if (copies) copy(target, byId(copies).textContent);
  else if (target.closest("#faults button")) copy(target, target.textContent);
});

refresh();
