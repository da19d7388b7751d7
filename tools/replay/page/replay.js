"use strict";
const data = JSON.parse(document.getElementById("data").textContent);
const range = document.getElementById("range");
const moment = document.getElementById("moment");
const here = document.getElementById("here");
const items = Array.from(document.querySelectorAll("#map [data-t]"), (element) => ({
    element,
    from: Number(element.dataset.t),
    to: element.dataset.e === undefined ? Infinity : Number(element.dataset.e),
}));

function position(time) {
    const way = data.way;
    let low = 0;
    let high = way.length - 1;
    while (low < high) {
        const middle = Math.ceil((low + high) / 2);
        if (way[middle][0] <= time) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    const before = way[low];
    const after = way[Math.min(low + 1, way.length - 1)];
    const part = after[0] > before[0] ? Math.min(1, Math.max(0, (time - before[0]) / (after[0] - before[0]))) : 0;
    return [before[1] + (after[1] - before[1]) * part, before[2] + (after[2] - before[2]) * part];
}

function show(time) {
    for (const item of items) {
        item.element.classList.toggle("later", item.from > time);
        item.element.classList.toggle("over", item.to <= time);
    }
    const [x, y] = position(time);
    here.setAttribute("cx", x);
    here.setAttribute("cy", y);
    moment.textContent = new Date(data.start + time * 1000).toISOString().slice(0, 19).replace("T", " ") + " UTC";
}

range.addEventListener("input", () => show(Number(range.value)));
for (const button of document.querySelectorAll("[data-go]")) {
    button.addEventListener("click", () => {
        range.value = button.dataset.go;
        show(Number(range.value));
    });
}
show(Number(range.value));
