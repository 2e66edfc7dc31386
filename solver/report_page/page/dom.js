// Elements of the page. Text comes in as text alone: nothing of a deck is ever read as HTML.

const SVG = "http://www.w3.org/2000/svg";

function fill(node, attributes, children) {
  for (const [name, value] of Object.entries(attributes)) {
    if (value === undefined || value === null || value === false) continue;
    if (name.startsWith("on")) node.addEventListener(name.slice(2), value);
    else node.setAttribute(name, value === true ? "" : String(value));
  }
  node.append(...children.flat(Infinity).filter((child) => child !== null && child !== undefined && child !== false));
  return node;
}

/** An element of HTML; strings among the children become text. Attributes "onclick" and so on take functions. */
export function el(tag, attributes = {}, ...children) {
  return fill(document.createElement(tag), attributes, children);
}

/** An element of SVG. */
export function svg(tag, attributes = {}, ...children) {
  return fill(document.createElementNS(SVG, tag), attributes, children);
}

/** The element with this id. */
export const byId = (id) => document.getElementById(id);

/** Puts children into an element in the place of what it held. */
export function refill(node, ...children) {
  node.replaceChildren(
    ...children.flat(Infinity).filter((child) => child !== null && child !== undefined && child !== false),
  );
  return node;
}

const SHORT = 15; // rows: such a table is not divided on paper, and never parted from its caption

/** A table; `head` are texts, `rows` arrays of texts, numbers or elements. Numbers stand to the right. */
export function table(head, rows, { caption, numeric = [] } = {}) {
  const cell = (tag, value, column) =>
    el(tag, { class: numeric.includes(column) ? "number" : null, scope: tag === "th" ? "col" : null }, value ?? "");
  return el(
    "table",
    { class: rows.length <= SHORT ? "short" : null },
    caption ? el("caption", {}, caption) : null,
    head.length
      ? el(
          "thead",
          {},
          el(
            "tr",
            {},
            head.map((text, i) => cell("th", text, i)),
          ),
        )
      : null,
    el(
      "tbody",
      {},
      rows.map((row) =>
        el(
          "tr",
          {},
          row.map((value, i) => cell("td", value, i)),
        ),
      ),
    ),
  );
}

/** A select box; `options` are [value, label] or { group, options }. */
export function select(label, options, value, onchange) {
  const option = ([key, text]) => el("option", { value: key, selected: String(key) === String(value) }, text);
  const box = el(
    "select",
    { "aria-label": label, onchange: (event) => onchange(event.target.value) },
    options.map((item) =>
      Array.isArray(item) ? option(item) : el("optgroup", { label: item.group }, item.options.map(option)),
    ),
  );
  box.value = String(value);
  return box;
}

/** A box to tick, with its label. */
export function tick(label, checked, onchange, hint) {
  const box = el("input", { type: "checkbox", onchange: (event) => onchange(event.target.checked) });
  box.checked = checked;
  return el("label", { class: "tick", title: hint }, box, el("span", {}, label));
}
