// The data of the report: JSON, and buffers that are decoded when somebody asks for them.

const TYPES = { f32: Float32Array, i32: Int32Array, u8: Uint8Array };

function bytesOfBase64(text) {
  if (Uint8Array.fromBase64) return Uint8Array.fromBase64(text);
  const raw = atob(text);
  const bytes = new Uint8Array(raw.length);
  for (let i = 0; i < raw.length; ++i) bytes[i] = raw.charCodeAt(i);
  return bytes;
}

async function inflated(bytes) {
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("deflate"));
  return new Uint8Array(await new Response(stream).arrayBuffer());
}

/** Numbers from planes of their bytes: first byte 0 of all, then byte 1, and so on. */
export function fromPlanes(planes, Type) {
  const size = Type.BYTES_PER_ELEMENT;
  if (size === 1) return planes;
  const count = planes.length / size;
  const bytes = new Uint8Array(planes.length);
  for (let plane = 0; plane < size; ++plane) {
    const start = plane * count;
    for (let i = 0; i < count; ++i) bytes[i * size + plane] = planes[start + i];
  }
  return new Type(bytes.buffer);
}

/** The data of a page: `json` as the contract has it, and `array` for what stands in buffers. */
export class Report {
  constructor(json, buffers) {
    this.json = json;
    this.buffers = buffers;
    this.decoded = new Map();
  }

  /** The numbers of a reference; an empty array, if there is none. */
  async array(reference, Type = Float32Array) {
    if (!reference) return new Type(0);
    if (!this.decoded.has(reference.b)) this.decoded.set(reference.b, this.decode(reference));
    return this.decoded.get(reference.b);
  }

  async decode({ b, t, n, c = 1 }) {
    const Type = TYPES[t];
    if (!Type || !this.buffers[b]) throw new Error(`the page holds no buffer ${b} of type ${t}`);
    if (n * c === 0) return new Type(0);
    const numbers = fromPlanes(await inflated(bytesOfBase64(this.buffers[b].textContent.trim())), Type);
    if (numbers.length !== n * c) throw new Error(`buffer ${b} has ${numbers.length} numbers instead of ${n * c}`);
    return numbers;
  }

  /** Lets go what was decoded for one picture: the paths of large models would fill the memory. */
  forget(reference) {
    if (reference) this.decoded.delete(reference.b);
  }
}

/** Reads the data of the page; null, if it has none. */
export function readReport() {
  const element = document.getElementById("finites-report");
  if (!element) return null;
  const json = JSON.parse(element.textContent);
  if (json.format !== 1) throw new Error(`the data have format ${json.format}, this page reads format 1`);
  return new Report(json, document.getElementsByClassName("finites-buffer"));
}
