// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
package witness;

import java.io.ByteArrayOutputStream;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.util.ArrayList;
import java.util.List;

import static java.nio.charset.StandardCharsets.UTF_8;

/** An entry of the list and its bytes. */
record Item(String id, String name) {
    /** Parses "id=name". */
    static Item of(String text) {
        int sign = text.indexOf('=');
        return new Item(text.substring(0, sign), text.substring(sign + 1));
    }

    /** Encodes a call: the consecutive items, then the function's number. */
    static byte[] frame(List<Item> items, int function) {
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        for (Item item : items) {
            writeText(out, item.name);
            writeText(out, item.id);
        }
        out.writeBytes(number(function));
        return out.toByteArray();
    }

    /** Decodes the items of a reply. */
    static List<Item> parse(byte[] reply) {
        ByteBuffer in = ByteBuffer.wrap(reply).order(ByteOrder.LITTLE_ENDIAN);
        List<Item> items = new ArrayList<>();
        while (in.hasRemaining()) {
            String name = readText(in);
            items.add(new Item(readText(in), name));
        }
        return items;
    }

    static int numberOf(byte[] event) {
        return ByteBuffer.wrap(event).order(ByteOrder.LITTLE_ENDIAN).getInt();
    }

    private static byte[] number(int value) {
        return ByteBuffer.allocate(4).order(ByteOrder.LITTLE_ENDIAN).putInt(value).array();
    }

    private static void writeText(ByteArrayOutputStream out, String text) {
        byte[] bytes = text.getBytes(UTF_8);
        out.writeBytes(number(bytes.length));
        out.writeBytes(bytes);
    }

    private static String readText(ByteBuffer in) {
        byte[] bytes = new byte[in.getInt()];
        in.get(bytes);
        return new String(bytes, UTF_8);
    }

    @Override
    public String toString() {
        return id + "=" + name;
    }
}
