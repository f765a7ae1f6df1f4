#!/usr/bin/env python3
"""A small order entry: picks a customer and goods in the component's windows, asks for quantities, prints the order.

    orderentry.py 'Provider=SQLite;Data Source=suite.db' [USER-ID]

A picker that is closed without a choice ends the list of goods. Quantities are read from standard input.
"""

from __future__ import annotations

import sys
import unicodedata
from decimal import Decimal, InvalidOperation
from typing import Iterator, NamedTuple

import orvenmod
from orvenmod import Picked

CUSTOMERS = 1
GOODS = 3
PICKER = 1


class Line(NamedTuple):
    goods: Picked
    quantity: Decimal


def ask_quantity(goods: Picked) -> Decimal:
    """A quantity above zero; whatever else is typed is asked for again."""
    while True:
        print(f"{goods.name} 数量：", end="", flush=True)
        typed = sys.stdin.readline()
        if not typed:
            raise EOFError("没有输入数量")
        try:
            quantity = Decimal(typed.strip())
        except InvalidOperation:
            quantity = Decimal(0)
        if quantity.is_finite() and quantity > 0:
            return quantity
        print("数量应为大于 0 的数字。")


def pick_lines(items: orvenmod.BasicInfo, connection: str) -> Iterator[Line]:
    while goods := items.main_interface(GOODS, "", "", connection, PICKER):
        yield Line(goods, ask_quantity(goods))


def padded(text: str, width: int) -> str:
    """The text filled up with blanks; a Chinese character takes two places."""
    taken = sum(2 if unicodedata.east_asian_width(letter) in "WF" else 1 for letter in text)
    return text + " " * (width - taken)


def print_order(customer: Picked, lines: list[Line]) -> None:
    print(f"\n订单　客户：{customer.number} {customer.name}")
    for place, line in enumerate(lines, 1):
        print(f"{place:>3}  {padded(line.goods.number, 14)} {padded(line.goods.name, 28)} {line.quantity:>8}")
    print(f"共 {len(lines)} 种货品，数量合计 {sum(line.quantity for line in lines)}")


def main(arguments: list[str]) -> int:
    if len(arguments) not in (1, 2):
        print(__doc__, file=sys.stderr)
        return 2
    connection = arguments[0]
    if len(arguments) == 2:
        orvenmod.save_setting("Orvencom", "SystemLogin", "gLoginUserId", arguments[1])
    try:
        with orvenmod.BasicInfo() as items:
            customer = items.main_interface(CUSTOMERS, "", "", connection, PICKER)
            if not customer:
                print("没有选择客户。")
                return 0
            print(f"客户：{customer.number} {customer.name}")
            print_order(customer, list(pick_lines(items, connection)))
    except (orvenmod.Error, EOFError) as failure:
        print(failure, file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
