// Numbers as text.

/** A number with so many significant digits, without trailing zeros; a dash for what is no number. */
export function show(value, digits = 5) {
  if (value === null || value === undefined || !Number.isFinite(value)) return "–";
  if (value === 0) return "0";
  const size = Math.abs(value);
  if (size >= 1e6 || size < 1e-3) {
    const [mantissa, exponent] = value.toExponential(digits - 1).split("e");
    return trimmed(mantissa) + "e" + Number(exponent);
  }
  return String(Number(value.toPrecision(digits)));
}

function trimmed(text) {
  return text.includes(".") ? text.replace(/\.?0+$/, "") : text;
}

/** What a click shows: seven digits, as the values have them. */
export const exact = (value) => show(value, 7);

/** The next smaller of 1, 2, 5 times a power of ten. */
export function roundDown(value) {
  if (!(value > 0) || !Number.isFinite(value)) return 1;
  const power = 10 ** Math.floor(Math.log10(value));
  const head = value / power;
  return (head >= 5 ? 5 : head >= 2 ? 2 : 1) * power;
}

/** Round numbers between low and high, about so many. */
export function ticks(low, high, count = 6) {
  if (!(high > low)) return [low];
  const rough = (high - low) / count;
  const power = 10 ** Math.floor(Math.log10(rough));
  const step = [1, 2, 5, 10].find((s) => s * power >= rough) * power;
  const result = [];
  for (let i = Math.ceil(low / step - 1e-9); i * step <= high + 1e-9 * step; ++i) result.push(i * step);
  return result;
}
