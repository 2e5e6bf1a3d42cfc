// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

import java.io.ByteArrayOutputStream;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.util.List;

import static java.nio.charset.StandardCharsets.UTF_8;

/** An entry of the list, and its bytes in a message. */
final class Item {
    final String id;
    final String name;

    Item(String id, String name) {
        this.id = id;
        this.name = name;
    }

    /** The items, each a name and an id with their lengths before them; then the function. */
    static byte[] pack(List<Item> items, int function) {
        ByteArrayOutputStream data = new ByteArrayOutputStream();
        for (Item item : items) {
            for (String text : List.of(item.name, item.id)) {
                byte[] bytes = text.getBytes(UTF_8);
                data.writeBytes(number(bytes.length));
                data.writeBytes(bytes);
            }
        }
        data.writeBytes(number(function));
        return data.toByteArray();
    }

    /** The first item of a reply. */
    static Item unpack(byte[] reply) {
        int nameLength = numberAt(reply, 0);
        int idLength = numberAt(reply, 4 + nameLength);
        return new Item(new String(reply, 8 + nameLength, idLength, UTF_8),
                new String(reply, 4, nameLength, UTF_8));
    }

    static int numberAt(byte[] data, int offset) {
        return ByteBuffer.wrap(data).order(ByteOrder.LITTLE_ENDIAN).getInt(offset);
    }

    private static byte[] number(int value) {
        return ByteBuffer.allocate(4).order(ByteOrder.LITTLE_ENDIAN).putInt(value).array();
    }
}
