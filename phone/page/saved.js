// A saved page: the lines are in the document itself.

import { History } from "./history.js";
import { parse } from "./json.js";
import { show } from "./view.js";

const history = new History();
show(history);
history.append(parse(document.getElementById("lines").textContent).lines.map(({ line }) => line));
