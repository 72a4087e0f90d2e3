// Shows what the server tells of its cloud, until it is loaded.
async function show() {
    const info = await (await fetch("/api/info")).json();
    document.getElementById("info").textContent = JSON.stringify(info, null, 2);
    if (info.state === "loading")
        setTimeout(show, 200);
}
show();
