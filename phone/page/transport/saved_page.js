// Makes one HTML file of the page and the lines, that shows the same phone without any server. A page from the
// disk may import nothing: its script and its style were bundled, each into one file, when the tool was built.

async function read(name) {
  const response = await fetch(`/page/${name}`);
  if (!response.ok) throw new Error(`${name} of this page can’t be read: ${response.status}.`);
  return response.text();
}

async function hashOf(text) {
  if (!crypto.subtle) {
    throw new Error("Browsers let a page be saved only at this machine’s own address, or over HTTPS.");
  }
  const digest = await crypto.subtle.digest("SHA-256", new TextEncoder().encode(text));
  return `'sha256-${btoa(String.fromCharCode(...new Uint8Array(digest)))}'`;
}

/** The file. `lines` has a JSON text on each line; `version` is the tool's. */
export async function pageOf(lines, version) {
  const [script, style] = await Promise.all([read("saved.js"), read("saved.css")]);
  const policy =
    `default-src 'none'; script-src ${await hashOf(script)}; style-src ${await hashOf(style)}; ` +
    "base-uri 'none'; form-action 'none'";
  const now = new Date().toISOString().slice(0, 16).replace("T", ", ");
  const data = lines.replaceAll("<", "\\u003c");
  return `<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="${policy}">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<meta name="generator" content="quorvantis-push ${version}">
<title>A phone, saved – QuorvantisPush</title>
<style>${style}</style>
</head>
<body class="saved">
<div id="page">
<header id="head"><h1>QuorvantisPush <span>a phone, as it was on ${now} UTC</span></h1></header>
<main>
<div id="device"><section id="phone" aria-label="Phone"></section></div>
<section id="past" aria-label="What happened"><div id="timeline"></div>
<aside id="stored" tabindex="0" aria-label="What is stored"></aside></section>
</main>
</div>
<section id="moment" aria-label="The moment that is shown"></section>
<script type="application/jsonl" id="lines">${data}</script>
<script>${script}</script>
</body>
</html>
`;
}
