.pragma library

// The overlay's figures, drawn for a moment t (0...1 of one cycle) in a w × h box.

function circle(ctx, x, y, r) { ctx.beginPath(); ctx.arc(x, y, Math.max(r, 0), 0, 2 * Math.PI); ctx.fill(); }
function ring(ctx, x, y, r) { ctx.beginPath(); ctx.arc(x, y, Math.max(r, 0), 0, 2 * Math.PI); ctx.stroke(); }
function bar(ctx, x, y, w, h) {
    var r = Math.min(w, h) / 2;
    ctx.beginPath();
    ctx.moveTo(x + r, y); ctx.lineTo(x + w - r, y); ctx.arcTo(x + w, y, x + w, y + r, r);
    ctx.lineTo(x + w, y + h - r); ctx.arcTo(x + w, y + h, x + w - r, y + h, r);
    ctx.lineTo(x + r, y + h); ctx.arcTo(x, y + h, x, y + h - r, r);
    ctx.lineTo(x, y + r); ctx.arcTo(x, y, x + r, y, r);
    ctx.fill();
}
// A pulse of 0...1...0 over the cycle, shifted by `delay` of a cycle.
function pulse(t, delay) { var p = ((t - delay) % 1 + 1) % 1; return 0.5 - 0.5 * Math.cos(2 * Math.PI * p); }
function phase(t, delay) { return ((t - delay) % 1 + 1) % 1; }
function ease(p) { return p < 0.5 ? 2 * p * p : 1 - Math.pow(-2 * p + 2, 2) / 2; }

function paintAnimation(ctx, name, w, h, t) {
    var cx = w / 2, cy = h / 2, i, a, s;
    switch (name) {
    case "systemActivityIndicator":
        for (i = 0; i < 8; ++i) {
            a = i * Math.PI / 4 + t * 2 * Math.PI;
            ctx.globalAlpha = 0.25 + 0.75 * ((i + 8 - Math.floor(t * 8)) % 8) / 7;
            ctx.save(); ctx.translate(cx, cy); ctx.rotate(a); bar(ctx, -w * 0.04, -h * 0.45, w * 0.08, h * 0.2); ctx.restore();
        }
        break;
    case "horizontalCirclesPulse":
        s = (w - 6) / 3;
        for (i = 0; i < 3; ++i) circle(ctx, s / 2 + i * (s + 3), cy, s / 2 * pulse(t, i * 0.2));
        break;
    case "lineScaling":
        s = w / 9;
        for (i = 0; i < 5; ++i) {
            var lh = h * (0.35 + 0.65 * pulse(t, i * 0.1));
            bar(ctx, i * 2 * s, cy - lh / 2, s, lh);
        }
        break;
    case "singleCirclePulse":
        ctx.globalAlpha = 1 - ease(t); circle(ctx, cx, cy, w / 2 * ease(t));
        break;
    case "multipleCirclePulse":
        for (i = 0; i < 3; ++i) { a = phase(t, i * 0.33); ctx.globalAlpha = 1 - a; circle(ctx, cx, cy, w / 2 * a); }
        break;
    case "singleCircleScaleRipple":
        ctx.lineWidth = 3; ctx.globalAlpha = 1 - ease(t); ring(ctx, cx, cy, (w / 2 - 2) * ease(t));
        break;
    case "multipleCircleScaleRipple":
        ctx.lineWidth = 3;
        for (i = 0; i < 3; ++i) { a = ease(phase(t, i * 0.2)); ctx.globalAlpha = 1 - a; ring(ctx, cx, cy, (w / 2 - 2) * a); }
        break;
    case "circleSpinFade":
        s = (w - 12) / 3.5;
        for (i = 0; i < 8; ++i) {
            a = i * Math.PI / 4;
            var k = pulse(t, -i / 8);
            ctx.globalAlpha = 0.3 + 0.7 * k;
            circle(ctx, cx + (cx - s / 2) * Math.cos(a), cy + (cy - s / 2) * Math.sin(a), s / 2 * (0.4 + 0.6 * k));
        }
        break;
    case "lineSpinFade":
        for (i = 0; i < 8; ++i) {
            ctx.globalAlpha = 0.2 + 0.8 * pulse(t, -i / 8);
            ctx.save(); ctx.translate(cx, cy); ctx.rotate(i * Math.PI / 4);
            bar(ctx, -w * 0.05, -h * 0.5, w * 0.1, h * 0.28); ctx.restore();
        }
        break;
    case "circleRotateChase":
        for (i = 0; i < 5; ++i) {
            a = ease(phase(t, i * 0.06)) * 2 * Math.PI - Math.PI / 2;
            circle(ctx, cx + (cx - 5) * Math.cos(a), cy + (cy - 5) * Math.sin(a), 5 * (1 - i * 0.15));
        }
        break;
    case "circleStrokeSpin":
        ctx.lineWidth = 3; ctx.lineCap = "round";
        var end = Math.min(1, ease(Math.min(t * 1.7 / 0.7, 1)));
        var start = t * 1.7 < 0.5 ? 0 : ease(Math.min((t * 1.7 - 0.5) / 1.2, 1));
        var turn = t * 2 * Math.PI;
        if (end > start) {
            ctx.beginPath();
            ctx.arc(cx, cy, w / 2 - 2, -Math.PI / 2 + turn + start * 2 * Math.PI, -Math.PI / 2 + turn + end * 2 * Math.PI);
            ctx.stroke();
        }
        break;
    }
}

// Polylines drawn up to `t` of their length, stroke 9.
function paintIcon(ctx, name, w, h, t) {
    var paths = {
        "succeed": [[[0.15, 0.5], [0.5, 0.8], [1.0, 0.25]]],
        "failed": [[[0.15, 0.15], [0.85, 0.85]], [[0.15, 0.85], [0.85, 0.15]]],
        "added": [[[0.1, 0.5], [0.9, 0.5]], [[0.5, 0.1], [0.5, 0.9]]]
    }[name];
    if (!paths) return;
    ctx.lineWidth = 9; ctx.lineCap = "round"; ctx.lineJoin = "round";
    paths.forEach(function (points) {
        var total = 0, i;
        for (i = 1; i < points.length; ++i) total += Math.hypot((points[i][0] - points[i - 1][0]) * w, (points[i][1] - points[i - 1][1]) * h);
        var left = total * t;
        ctx.beginPath(); ctx.moveTo(points[0][0] * w, points[0][1] * h);
        for (i = 1; i < points.length && left > 0; ++i) {
            var dx = (points[i][0] - points[i - 1][0]) * w, dy = (points[i][1] - points[i - 1][1]) * h;
            var len = Math.hypot(dx, dy), f = Math.min(1, left / len);
            ctx.lineTo(points[i - 1][0] * w + dx * f, points[i - 1][1] * h + dy * f);
            left -= len;
        }
        ctx.stroke();
    });
}

// A still: the system symbols the overlay names, drawn as simple shapes.
function paintStill(ctx, name, w, h) {
    var cx = w / 2, cy = h / 2;
    ctx.lineWidth = 6; ctx.lineCap = "round"; ctx.lineJoin = "round";
    if (name === "checkmark") { paintIcon(ctx, "succeed", w, h, 1); return; }
    if (name === "xmark") { paintIcon(ctx, "failed", w, h, 1); return; }
    if (name.indexOf("heart") === 0) {
        ctx.beginPath(); ctx.moveTo(cx, h * 0.85);
        ctx.bezierCurveTo(w * 0.05, h * 0.5, w * 0.2, h * 0.05, cx, h * 0.3);
        ctx.bezierCurveTo(w * 0.8, h * 0.05, w * 0.95, h * 0.5, cx, h * 0.85); ctx.fill(); return;
    }
    if (name.indexOf("star") === 0) {
        ctx.beginPath();
        for (var i = 0; i < 10; ++i) {
            var r = i % 2 ? w * 0.2 : w * 0.48, a = -Math.PI / 2 + i * Math.PI / 5;
            ctx.lineTo(cx + r * Math.cos(a), cy + r * Math.sin(a));
        }
        ctx.closePath(); ctx.fill(); return;
    }
    if (name.indexOf("exclamationmark") === 0) {
        ctx.beginPath(); ctx.moveTo(cx, h * 0.08); ctx.lineTo(w * 0.95, h * 0.9); ctx.lineTo(w * 0.05, h * 0.9); ctx.closePath(); ctx.stroke();
        ctx.beginPath(); ctx.moveTo(cx, h * 0.38); ctx.lineTo(cx, h * 0.62); ctx.stroke(); circle(ctx, cx, h * 0.76, 3); return;
    }
    // Any other symbol: a filled disc with a ring, so the card never stands empty.
    circle(ctx, cx, cy, w * 0.2); ring(ctx, cx, cy, w * 0.42);
}

function paintProgress(ctx, w, h, progress) {
    ctx.lineWidth = 4; ctx.globalAlpha = 0.3;
    ring(ctx, w / 2, h / 2, w / 2 - 4);
    ctx.globalAlpha = 1; ctx.lineWidth = 8; ctx.lineCap = "round";
    ctx.beginPath(); ctx.arc(w / 2, h / 2, w / 2 - 4, -Math.PI / 2, -Math.PI / 2 + 2 * Math.PI * progress); ctx.stroke();
    ctx.font = "bold 15px sans-serif"; ctx.textAlign = "center"; ctx.textBaseline = "middle";
    ctx.fillText(Math.floor(progress * 100) + "%", w / 2, h / 2);
}

function paint(ctx, kind, name, w, h, t, tint, progress) {
    ctx.reset();
    ctx.fillStyle = tint; ctx.strokeStyle = tint;
    if (kind === "animation") paintAnimation(ctx, name, w, h, t);
    else if (kind === "icon") paintIcon(ctx, name, w, h, t);
    else if (kind === "still") paintStill(ctx, name, w, h);
    else if (kind === "progress") paintProgress(ctx, w, h, progress);
}
